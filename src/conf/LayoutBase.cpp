#include "conf/LayoutBase.h"

#include <optional>

#include "conf/LayoutLine.h"

namespace quenmar {

using LineKind = ConfLine::Kind;

LayoutBase::LayoutBase(const ConfFile& file, LayoutWishes& wishes, StringView series,
                       ConfCharset charset)
    : wishes_(wishes),
      charset_(charset),
      lines_(file.Lines(series)),
      fates_(lines_.size()),
      settings_(wishes.settings.size()),
      entries_(wishes.entries.size()) {
  Number();
}

void LayoutBase::Number() {
  for (size_t line = 0; line < lines_.size(); ++line) {
    const ConfLine& parsed = lines_[line];
    fates_[line].active = !parsed.commented;
    if (parsed.kind == LineKind::kSetting) {
      fates_[line].name = wishes_.names.Number(parsed.name);
      Append(settings_, line);
    } else if (parsed.kind == LineKind::kSeriesEntry) {
      fates_[line].name = wishes_.values.Number(parsed.value);
      Append(entries_, line);
    }
  }
}

void LayoutBase::Append(std::vector<NameLines>& all, size_t line) {
  const size_t name = fates_[line].name;
  if (name >= all.size()) all.resize(name + 1);
  NameLines& lines = all[name];
  if (lines.first == kNoLine) {
    lines.first = line;
  } else {
    fates_[lines.last].next = line;
  }
  lines.last = line;
  lines.active = lines.active || fates_[line].active;
}

void LayoutBase::Decide() {
  ChangeSettings();
  SwitchEntries();
  RemoveUnwanted();
  CorrectValues();
}

std::string LayoutBase::ChangedLine(size_t line) const {
  const Fate& fate = fates_[line];
  return RewriteLine(
      lines_[line],
      fate.value != nullptr ? std::optional<std::string_view>(*fate.value) : std::nullopt,
      fate.active);
}

/// The reader's own rule, on the lines as they will be: the first line of a setting gives its
/// value. Where that one is commented out, each further active line gives another, until any
/// setting of the file has had a second active line behind an active first one.
/// @return the line that gives each setting its value, by the setting's number.
std::vector<size_t> LayoutBase::ValueLines() const {
  std::vector<size_t> valueLines(settings_.size(), kNoLine);
  std::vector<bool> active(settings_.size());
  bool duplicateSeen = false;
  for (size_t line = 0; line < lines_.size(); ++line) {
    const Fate& fate = fates_[line];
    if (lines_[line].kind != LineKind::kSetting || fate.removed) continue;
    if (valueLines[fate.name] == kNoLine) {
      valueLines[fate.name] = line;
      active[fate.name] = fate.active;
    } else if (fate.active && active[fate.name]) {
      duplicateSeen = true;
    } else if (fate.active && !duplicateSeen) {
      valueLines[fate.name] = line;
    }
  }
  return valueLines;
}

void LayoutBase::ChangeSettings() {
  const std::vector<size_t> valueLines = ValueLines();
  for (size_t name = 0; name < wishes_.settings.size(); ++name) {
    const NameLines& lines = settings_[name];
    if (lines.first == kNoLine) continue;
    const WantedSetting& wanted = wishes_.settings[name];
    if (!wanted.IsValue(lines_[valueLines[name]].value, charset_)) {
      if (lines.active) {
        ForEach(lines, [&](size_t line) {
          if (fates_[line].active) GiveValue(line, wanted);
        });
      } else {
        GiveValue(lines.first, wanted);
      }
    }
    if (wanted.active != lines.active) Switch(lines, wanted.active);
  }
}

void LayoutBase::Switch(const NameLines& lines, bool active) {
  if (active) {
    fates_[lines.first].active = true;
  } else {
    ForEach(lines, [this](size_t line) { fates_[line].active = false; });
  }
}

void LayoutBase::GiveValue(size_t line, const WantedSetting& wanted) {
  if (!wanted.IsValue(lines_[line].value, charset_)) fates_[line].value = &wanted.value;
}

void LayoutBase::SwitchEntries() {
  for (size_t entry = 0; entry < wishes_.entries.size(); ++entry) {
    const NameLines& lines = entries_[entry];
    const bool on = wishes_.entries[entry].on;
    if (lines.first != kNoLine && lines.active != on) Switch(lines, on);
  }
}

void LayoutBase::RemoveUnwanted() {
  bool some = false;
  for (size_t name = wishes_.settings.size(); name < settings_.size(); ++name) {
    ForEach(settings_[name], [this](size_t line) { fates_[line].removed = true; });
    some = true;
  }
  if (!some) return;
  RemoveComments();
  RemoveBlankLines();
}

/// A comment block belongs to all settings and series entries that follow it without a blank line
/// or comment between, and is removed with the last of them.
void LayoutBase::RemoveComments() {
  const auto endOfRun = [this](size_t line, auto belongs) {
    while (line < lines_.size() && belongs(lines_[line])) ++line;
    return line;
  };
  size_t line = 0;
  while (line < lines_.size()) {
    const size_t comments = line;
    const size_t entries = endOfRun(comments, IsCommentLine);
    line = endOfRun(entries, [](const ConfLine& entry) { return entry.IsEntry(); });
    bool allRemoved = line > entries;
    for (size_t entry = entries; entry < line; ++entry) {
      allRemoved = allRemoved && fates_[entry].removed;
    }
    for (size_t comment = comments; allRemoved && comment < entries; ++comment) {
      fates_[comment].removed = true;
    }
    if (line == comments) ++line;  // a blank line
  }
}

/// Of two blank lines that become neighbours because what was between them is removed, the lower
/// one is removed.
void LayoutBase::RemoveBlankLines() {
  bool behindBlank = false;
  bool behindRemoved = false;
  for (size_t line = 0; line < lines_.size(); ++line) {
    if (fates_[line].removed) {
      behindRemoved = true;
      continue;
    }
    const bool blank = lines_[line].kind == LineKind::kBlank;
    if (blank && behindBlank && behindRemoved) fates_[line].removed = true;
    behindBlank = blank;
    behindRemoved = false;
  }
}

/// A duplicate elsewhere that has come or gone can make another line of a doubled setting the one
/// that the reader takes the value from. Then all its lines get the wanted one. That changes no
/// line's state, so that it makes no further correction necessary.
void LayoutBase::CorrectValues() {
  const std::vector<size_t> valueLines = ValueLines();
  for (size_t name = 0; name < wishes_.settings.size(); ++name) {
    const size_t valueLine = valueLines[name];
    if (valueLine == kNoLine || fates_[valueLine].value != nullptr) continue;
    const WantedSetting& wanted = wishes_.settings[name];
    if (wanted.ReadsAs(lines_[valueLine].value, charset_)) continue;
    ForEach(settings_[name], [&](size_t line) { GiveValue(line, wanted); });
  }
}

}  // namespace quenmar
