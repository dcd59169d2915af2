#include "compare/ReleaseChanges.h"

#include <set>
#include <utility>

#include "conf/ConfReader.h"
#include "conf/ConfSetting.h"

namespace quenmar {

namespace {

std::vector<DefaultChange> ChangedDefaults(const OldVersion& old, const Document& now,
                                           const Document& server) {
  std::vector<DefaultChange> changes;
  std::set<StringView> seen;
  for (const Field& setting : server.Fields()) {
    const StringView name = setting.Name();
    if (name.empty() || !seen.insert(name).second) continue;
    if (auto change = FindDefaultChange(old, now, setting)) changes.push_back(std::move(*change));
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

std::optional<DefaultChange> FindDefaultChange(const OldVersion& old, const Document& now,
                                               const Field& setting) {
  const auto before = old.settings->Fields().Field(setting.Name());
  const auto after = now.Fields().Field(setting.Name());
  if (before->Name().empty() || after->Name().empty()) return std::nullopt;
  if (before->Value() == after->Value() || setting.Value() == after->Value()) return std::nullopt;
  const bool untouched = setting.Value() == before->Value();
  return DefaultChange{String(setting.Name()), String(before->Value()), String(after->Value()),
                       String(setting.Value()),
                       untouched ? DefaultChange::Kind::kDefault : DefaultChange::Kind::kBoth};
}

ReleaseChanges FindReleaseChanges(const OldVersion& old, const VersionTrees& now,
                                  const VersionTrees& server) {
  return {ChangedDefaults(old, now.settings, server.settings),
          WithdrawnEntries(*old.series, now.series, server.series)};
}

}  // namespace quenmar
