#include "conf/LayoutAdditions.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "conf/LayoutLine.h"

namespace quenmar {

using LineKind = ConfLine::Kind;

namespace {

/// Keeps the place of a value that will be replaced; any text that each character set has.
constexpr std::string_view kPlaceholder = "0";

}  // namespace

std::vector<Insertion> LayoutAdditions::List() {
  const bool settings = LacksSettings();
  const bool entries = LacksEntries();
  if (!settings && !entries) return {};
  FindOrigins();
  if (settings) {
    PrepareParagraphs();
    AddSettings();
  }
  if (entries) AddEntries();
  std::stable_sort(insertions_.begin(), insertions_.end(),
                   [](const Insertion& one, const Insertion& other) {
                     return one.line != other.line ? one.line < other.line : one.kind < other.kind;
                   });
  return std::move(insertions_);
}

bool LayoutAdditions::LacksSettings() const {
  for (size_t setting = 0; setting < context_.wishes.settings.size(); ++setting) {
    if (context_.base.LastLineOf(setting) == kNoLine) return true;
  }
  return false;
}

bool LayoutAdditions::IsToBeAdded(size_t entry) const {
  return !context_.base.HasEntry(entry) &&
         (context_.wishes.entries[entry].on || context_.options.saveCommentedSeries);
}

bool LayoutAdditions::LacksEntries() const {
  for (size_t entry = 0; entry < context_.wishes.entries.size(); ++entry) {
    if (IsToBeAdded(entry)) return true;
  }
  return false;
}

/// A setting comes from its first active line, else from its first one. A series entry comes from
/// its first line, which is the one that gives it its type.
void LayoutAdditions::FindOrigins() {
  lines_ = other_.Lines(context_.options.series);
  numbers_.assign(lines_.size(), kNoLine);
  settings_.resize(context_.wishes.settings.size());
  entries_.resize(context_.wishes.entries.size());
  for (size_t line = 0; line < lines_.size(); ++line) {
    if (!lines_[line].IsEntry()) continue;
    const bool setting = lines_[line].kind == LineKind::kSetting;
    std::vector<Origin>& origins = setting ? settings_ : entries_;
    const size_t number = NumberOf(lines_[line]);
    if (number >= origins.size()) continue;
    numbers_[line] = number;
    Origin& origin = origins[number];
    origin.last = line;
    const bool active = !lines_[line].commented;
    if (origin.line == kNoLine || (setting && active && !origin.active)) {
      origin.line = line;
      origin.active = active;
    }
  }
}

/// @return the number of the line's setting or series entry, wanted or not.
size_t LayoutAdditions::NumberOf(const ConfLine& line) const {
  const bool setting = line.kind == LineKind::kSetting;
  const NameNumbers& numbers = setting ? context_.wishes.names : context_.wishes.values;
  const std::string_view key = setting ? line.name : line.value;
  const std::optional<std::string> bytes = Encoded(key);
  return bytes ? numbers.Find(*bytes) : kNoLine;  // what cannot be encoded is no wanted name
}

void LayoutAdditions::PrepareParagraphs() {
  const std::vector<ConfLine>& base = context_.base.Lines();
  paragraphEnds_.resize(base.size());
  size_t end = base.size();
  size_t firstSetting = kNoLine;
  for (size_t line = base.size(); line-- > 0;) {
    if (base[line].kind == LineKind::kBlank) end = line;
    paragraphEnds_[line] = end;
    if (base[line].kind == LineKind::kSetting && !context_.base.IsRemoved(line))
      firstSetting = line;
  }
  if (firstSetting == kNoLine) return;
  firstParagraph_ = firstSetting;
  while (firstParagraph_ > 0 && base[firstParagraph_ - 1].kind != LineKind::kBlank)
    --firstParagraph_;
}

/// Takes the lines of the other text in order. What the base lacks is inserted behind the last
/// setting so far that is in the base and has no further line, or that was added.
void LayoutAdditions::AddSettings() {
  Anchor anchor;
  for (size_t line = 0; line < lines_.size(); ++line) {
    const size_t setting = numbers_[line];
    if (lines_[line].kind != LineKind::kSetting || setting == kNoLine) continue;
    const size_t baseLine = context_.base.LastLineOf(setting);
    if (baseLine == kNoLine) {
      if (settings_[setting].line == line) AddSetting(setting, line, anchor);
    } else if (settings_[setting].last == line) {
      anchor = {baseLine, kNoLine};
    }
  }
  // What neither text has comes last, in a new line.
  for (size_t setting = 0; setting < settings_.size(); ++setting) {
    if (context_.base.LastLineOf(setting) == kNoLine && settings_[setting].line == kNoLine) {
      AddSetting(setting, kNoLine, anchor);
    }
  }
}

/// @param line of the other text, from which the setting comes; `kNoLine` for none
/// @param anchor what it goes behind; becomes the setting itself
void LayoutAdditions::AddSetting(size_t setting, size_t line, Anchor& anchor) {
  size_t comments = line;
  if (line != kNoLine) {
    while (comments > 0 && IsCommentLine(lines_[comments - 1])) --comments;
  }
  const bool anchored = anchor.baseLine != kNoLine || anchor.insertion != kNoLine;
  if (anchored && comments == line) {
    PlaceLine(SettingLine(setting, line), anchor);
    return;
  }
  std::vector<std::string> paragraph;
  for (; comments != line; ++comments) {
    paragraph.push_back(
        Brought(lines_[comments].bytes, context_.wishes.settings[setting].nameText));
  }
  paragraph.push_back(SettingLine(setting, line));
  PlaceParagraph(std::move(paragraph), anchor);
}

void LayoutAdditions::PlaceLine(std::string bytes, Anchor& anchor) {
  if (anchor.insertion != kNoLine) {
    insertions_[anchor.insertion].lines.push_back(std::move(bytes));
    return;
  }
  std::vector<std::string> lines;
  lines.push_back(std::move(bytes));
  anchor.insertion = Insert(anchor.baseLine + 1, Insertion::Kind::kLines, std::move(lines));
}

void LayoutAdditions::PlaceParagraph(std::vector<std::string> lines, Anchor& anchor) {
  size_t line = context_.base.Lines().size();
  Insertion::Kind kind = Insertion::Kind::kParagraph;
  if (anchor.baseLine != kNoLine) {
    line = paragraphEnds_[anchor.baseLine];
  } else if (firstParagraph_ != kNoLine) {
    line = firstParagraph_;
    kind = Insertion::Kind::kParagraphBefore;
  }
  anchor.insertion = Insert(line, kind, std::move(lines));
}

/// New entries of one type stay together, behind the base's last line of that type.
void LayoutAdditions::AddEntries() {
  std::unordered_map<std::string_view, size_t> lastLines;
  const std::vector<ConfLine>& base = context_.base.Lines();
  for (size_t line = 0; line < base.size(); ++line) {
    if (base[line].kind == LineKind::kSeriesEntry) lastLines[base[line].name] = line;
  }
  std::unordered_map<std::string, size_t> insertions;
  for (size_t entry = 0; entry < entries_.size(); ++entry) {
    if (!IsToBeAdded(entry)) continue;
    const std::string type = TypeOf(entry);
    const auto [known, isNew] = insertions.try_emplace(type, insertions_.size());
    if (isNew) {
      const auto last = lastLines.find(type);
      if (last != lastLines.end()) {
        Insert(last->second + 1, Insertion::Kind::kLines, {});
      } else {
        Insert(base.size(), Insertion::Kind::kAtEnd, {});
      }
    }
    insertions_[known->second].lines.push_back(EntryLine(entry));
  }
}

/// @param line of the other text; `kNoLine` where the setting comes from none
/// @return the line with the wanted value and state.
std::string LayoutAdditions::SettingLine(size_t setting, size_t line) const {
  const WantedSetting& wanted = context_.wishes.settings[setting];
  if (line == kNoLine) return (wanted.active ? "" : "//") + wanted.name + ": " + wanted.value;
  const ConfLine& origin = lines_[line];
  const std::optional<std::string> value = Encoded(origin.value);
  if (value && wanted.IsValue(*value, context_.charset)) {
    const std::string bytes = Brought(origin.bytes, wanted.nameText);
    return RewriteLine(Parsed(bytes), std::nullopt, wanted.active);
  }
  // A value that is replaced does not come along: the character set may lack its characters.
  const std::string bytes =
      Brought(RewriteLine(origin, kPlaceholder, !origin.commented), wanted.nameText);
  return RewriteLine(Parsed(bytes), wanted.value, wanted.active);
}

/// @return the type that the line of an added entry has.
std::string LayoutAdditions::TypeOf(size_t entry) const {
  const WantedEntry& wanted = context_.wishes.entries[entry];
  const size_t line = entries_[entry].line;
  return line == kNoLine ? wanted.type : Brought(lines_[line].name, wanted.about);
}

std::string LayoutAdditions::EntryLine(size_t entry) const {
  const WantedEntry& wanted = context_.wishes.entries[entry];
  const size_t line = entries_[entry].line;
  if (line == kNoLine) return (wanted.on ? "" : "//") + wanted.type + ": " + wanted.name;
  const std::string bytes = Brought(lines_[line].bytes, wanted.about);
  return RewriteLine(Parsed(bytes), std::nullopt, wanted.on);
}

ConfLine LayoutAdditions::Parsed(const std::string& bytes) const {
  ConfLine line = ConfGrammar(context_.options.series, context_.charset).Parse(TrimBytes(bytes));
  line.bytes = bytes;
  return line;
}

/// @param about what the bytes of the other text belong to, for the message
/// @return them in the character set of the file.
std::string LayoutAdditions::Brought(std::string_view bytes, StringView about) const {
  if (IsInCharset()) return std::string(bytes);
  return EncodeForSaving(other_.Text(bytes), about, context_.charset, context_.language);
}

/// @return bytes of the other text in the character set of the file; nothing where it lacks one of
/// their characters.
std::optional<std::string> LayoutAdditions::Encoded(std::string_view bytes) const {
  if (IsInCharset()) return std::string(bytes);
  return EncodeConfText(other_.Text(bytes), context_.charset);
}

/// @return whether the other text's bytes are those of the file's character set.
bool LayoutAdditions::IsInCharset() const {
  return other_.Encoding().ascii || other_.Charset() == context_.charset;
}

size_t LayoutAdditions::Insert(size_t line, Insertion::Kind kind, std::vector<std::string> lines) {
  insertions_.push_back({line, kind, std::move(lines)});
  return insertions_.size() - 1;
}

}  // namespace quenmar
