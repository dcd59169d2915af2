#include "compare/ReleaseChanges.h"

#include <set>

#include "conf/ConfReader.h"
#include "conf/ConfSetting.h"

namespace quenmar {

namespace {

std::vector<DefaultChange> ChangedDefaults(const Document& old, const Document& now,
                                           const Document& server) {
  std::vector<DefaultChange> changes;
  std::set<StringView> seen;
  for (const Field& setting : server.Fields()) {
    const StringView name = setting.Name();
    if (name.empty() || !seen.insert(name).second) continue;
    const auto before = old.Fields().Field(name);
    const auto after = now.Fields().Field(name);
    if (before->Name().empty() || after->Name().empty()) continue;
    if (before->Value() == after->Value() || setting.Value() == after->Value()) continue;
    const bool untouched = setting.Value() == before->Value();
    changes.push_back({String(name), String(before->Value()), String(after->Value()),
                       String(setting.Value()),
                       untouched ? DefaultChange::Kind::kDefault : DefaultChange::Kind::kBoth});
  }
  return changes;
}

std::vector<WithdrawnEntry> WithdrawnEntries(const Document& old, const Document& now,
                                             const Document& server) {
  std::vector<WithdrawnEntry> entries;
  for (const Field& entry : server.Fields()) {
    const StringView name = entry.Name();
    if (name.empty() || !IsActive(entry)) continue;
    if (old.Fields().IndexOf(name) < 0 || now.Fields().IndexOf(name) >= 0) continue;
    entries.push_back({String(TypeOf(entry)), String(name)});
  }
  return entries;
}

}  // namespace

std::optional<OldVersion> OldVersion::Read(const ConfFile& file, const Options& options,
                                           const Language& language, String& trouble) {
  trouble.clear();
  OldVersion version;
  ConfNotes notes;
  if (file.Encoding().utf16) {
    trouble = language.Text(Message::kUtf16Text);
  } else if (!ReadQuietly(file, options, *version.settings, *version.series, &notes)) {
    trouble = notes.trouble;
  } else {
    return version;
  }
  return std::nullopt;
}

ReleaseChanges FindReleaseChanges(const OldVersion& old, const VersionTrees& now,
                                  const VersionTrees& server) {
  return {ChangedDefaults(*old.settings, now.settings, server.settings),
          WithdrawnEntries(*old.series, now.series, server.series)};
}

}  // namespace quenmar
