#include "compare/ReleaseChanges.h"

#include <set>
#include <utility>

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

std::vector<SeriesEntry> WithdrawnEntries(const Document& old, const Document& now,
                                          const Document& server) {
  std::vector<SeriesEntry> entries;
  for (const Field& entry : server.Fields()) {
    const StringView name = entry.Name();
    if (name.empty() || !IsActive(entry)) continue;
    if (old.Fields().IndexOf(name) < 0 || now.Fields().IndexOf(name) >= 0) continue;
    entries.push_back({String(TypeOf(entry)), String(name)});
  }
  return entries;
}

}  // namespace

std::optional<OldVersion> OldVersion::Read(const OldFile& found, const Options& options,
                                           const Language& language, ConfNotes& notes) {
  notes = ConfNotes();
  notes.reason = found.reason;
  if (!found.file) return std::nullopt;
  if (found.file->Encoding().utf16) {
    notes.reason = language.Text(Message::kUtf16Text);
    return std::nullopt;
  }
  OldVersion version;
  if (!ReadQuietly(*found.file, options, *version.settings, *version.series, &notes)) {
    return std::nullopt;
  }
  return version;
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
