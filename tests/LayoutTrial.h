/// What must be true of every laid-out file. The tests try it on generated files, the fuzz target
/// on any bytes. The promises are checked by a reading of their own beside the system's reader.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "conf/ConfReader.h"
#include "conf/ConfSetting.h"
#include "conf/Layout.h"
#include "conf/LineDiff.h"
#include "text/Charset.h"
#include "text/RuntimeError.h"
#include "text/String.h"

namespace quenmar {

/// One file, its lines and content read in the plainest way.
class PlainFile {
 public:
  enum class Kind { kBlank, kComment, kSetting, kEntry };
  struct Line {
    std::string bytes;
    Kind kind = Kind::kBlank;
    std::string name = {};
  };

  explicit PlainFile(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    while (!bytes.empty()) {
      const size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
      lines.push_back(Parse(std::string(bytes.substr(0, end))));
      bytes.remove_prefix(end);
      bytes.remove_prefix(bytes.starts_with("\r\n") ? 2 : bytes.empty() ? 0 : 1);
    }
  }

  std::vector<Line> lines;

 private:
  static std::string Small(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return text;
  }

  static Line Parse(std::string bytes) {
    std::string text = bytes.substr(std::min(bytes.find_first_not_of(' '), bytes.size()));
    Line line{std::move(bytes)};
    if (text.empty()) return line;
    line.kind = Kind::kComment;
    const bool active = !text.starts_with("//");
    if (!active) text.erase(0, 2);
    const size_t colon = text.find(':');
    const char first = text.empty() ? ' ' : Small(text).front();
    if (colon == std::string::npos || first < 'a' || first > 'z') return line;
    line.name = text.substr(0, colon);
    if (line.name.find(' ') != std::string::npos) return line;
    static const std::set<std::string> kSeries = {"npc", "map", "addon", "import"};
    const std::string name = Small(line.name);
    if (kSeries.contains(name)) {
      line.kind = Kind::kEntry;
    } else if (active || (name != "note" && name != "example")) {
      line.kind = Kind::kSetting;
    }
    return line;
  }
};

/// Lays random wishes into one text.
class LayoutTrial {
 public:
  using Pick = std::function<unsigned(unsigned)>;  ///< a number below the given one

  LayoutTrial(std::string base, std::string other, Pick pick)
      : base_({}, std::move(base)), other_({}, std::move(other)), pick_(std::move(pick)) {}

  /// @return the promise that is broken; empty for none.
  std::string BrokenPromise() {
    options_.saveCommentedSeries = pick_(2) != 0;
    Wishes wishes, offered;
    if (base_.Encoding().utf16 || !Read(base_, wishes) || !Read(other_, offered)) return {};
    const LaidOut same = LayOut(base_, other_, wishes, options_, language_);
    if (same.bytes != base_.Bytes()) return "nothing changed, same bytes";
    original_ = wishes;
    ChangeSettings(wishes, offered);
    ChangeEntries(wishes, offered);
    try {
      return Try(wishes);
    } catch (const RuntimeError&) {
      return FitsAll(wishes) ? "a character is lacking only where it is" : "";
    }
  }

 private:
  bool Read(const ConfFile& file, Wishes& wishes) const {
    Document settings;
    Document series;
    ConfNotes notes;
    if (!ReadQuietly(file, options_, settings, series, &notes)) return false;
    for (int i = 0; i < settings.Fields().Count(); ++i) {
      const auto field = settings.Fields().Field(i);
      if (settings.Fields().IndexOf(field->Name()) != i) continue;
      wishes.settings.push_back({String(field->Name()), String(field->Value()),
                                 notes.active.at(static_cast<size_t>(i)) != 0});
    }
    for (const Field& entry : series.Fields()) {
      wishes.entries.push_back({String(TypeOf(entry)), String(entry.Name()), IsActive(entry)});
    }
    return true;
  }

  String AnyValue() {
    static const auto kValues = Split(
        u"|x|1|y/|/|a b| a b |two // r|t\tr|a\tb // c|http://x|1 /&gt;/ 2|&lt;&amp;lt; /|&lt;|<&>|"
        u"\u00E9|//|x|2|\u2192|a longer value than before",
        u'|');
    return String(kValues[pick_(static_cast<unsigned>(kValues.size()))]);
  }

  void ChangeSettings(Wishes& wishes, const Wishes& offered) {
    std::vector<Wishes::Setting> kept;
    const unsigned calm = 1 + pick_(4);
    for (Wishes::Setting& setting : wishes.settings) {
      const unsigned what = pick_(4 * calm);
      if (what == 0) continue;
      if (what == 1 || what == 2) setting.value = AnyValue();
      if (what == 2 || what == 3) setting.active = !setting.active || IsNoteName(setting.name);
      kept.push_back(setting);
    }
    for (const Wishes::Setting& setting : offered.settings) {
      if (Find(wishes.settings, setting.name) != nullptr || pick_(3) == 0) continue;
      kept.push_back(setting);
      if (pick_(4) == 0) kept.back().value = AnyValue();
      if (pick_(4) == 0) kept.back().active = true;
    }
    wishes.settings = std::move(kept);
  }

  void ChangeEntries(Wishes& wishes, const Wishes& offered) {
    for (Wishes::Entry& entry : wishes.entries) entry.on = entry.on != (pick_(4) == 0);
    for (const Wishes::Entry& entry : offered.entries) {
      if (Find(wishes.entries, entry.name) != nullptr) continue;
      wishes.entries.push_back({entry.type, entry.name, pick_(2) == 0});
    }
  }

  /// @return whether every character that could be needed is in both character sets.
  [[nodiscard]] bool FitsAll(const Wishes& wishes) const {
    if (CharsetForSaving(base_.Encoding(), other_.Encoding()) == ConfCharset::kUtf8) return true;
    return FitsWindows1252(other_.Text(other_.Body())) &&
           std::all_of(wishes.settings.begin(), wishes.settings.end(),
                       [](const auto& wish) { return FitsWindows1252(wish.value); });
  }

  std::string Try(const Wishes& wishes) {
    const LaidOut laidOut = LayOut(base_, other_, wishes, options_, language_);
    const PlainFile before(base_.Bytes());
    const PlainFile after(laidOut.bytes);
    if (!CommentsAreKept(wishes, before, after)) return "comments are kept";
    const ConfFile file({}, laidOut.bytes);
    const std::vector<LineEdit> edits = DiffLines(base_, file);
    if (!EditsAreExact(edits, before, after)) return "the edits are what changes";
    // The plan warns of a file that will be read in another character set.
    if (!file.Encoding().ascii && file.Charset() != laidOut.charset) return {};
    if (!UnconcernedLinesStay(wishes, before, after)) return "what nobody wants changed stays";
    Wishes readAgain;
    if (!Read(file, readAgain)) return "the file can be read";
    if (!SettingsAreAsWanted(wishes, readAgain) || !EntriesAreAsWanted(wishes, readAgain)) {
      return "everything wanted is there as wanted and nothing else";
    }
    readAgain.entries = wishes.entries;
    const LaidOut second = LayOut(file, other_, readAgain, options_, language_);
    return second.bytes == laidOut.bytes ? "" : "a second save is the same";
  }

  static bool EditsAreExact(const std::vector<LineEdit>& edits, const PlainFile& before,
                            const PlainFile& after) {
    std::vector<std::string> lines;
    size_t next = 0;
    const auto keepUntil = [&](size_t end) {
      for (; next < end; ++next) lines.push_back(before.lines[next].bytes);
    };
    for (const LineEdit& edit : edits) {
      if (edit.oldLine < next || edit.oldLine + edit.removed.size() > before.lines.size())
        return false;
      if (edit.removed == edit.added || (next == edit.oldLine && next > 0)) return false;
      keepUntil(edit.oldLine);
      for (const std::string_view line : edit.removed) {
        if (line != before.lines[next++].bytes) return false;
      }
      lines.insert(lines.end(), edit.added.begin(), edit.added.end());
    }
    keepUntil(before.lines.size());
    return std::equal(lines.begin(), lines.end(), after.lines.begin(), after.lines.end(),
                      [](const std::string& one, const auto& other) { return one == other.bytes; });
  }

  template <class Wish>
  static const Wish* Find(const std::vector<Wish>& wishes, const String& name) {
    const auto hit = std::find_if(wishes.begin(), wishes.end(),
                                  [&](const Wish& wish) { return wish.name == name; });
    return hit == wishes.end() ? nullptr : &*hit;
  }

  /// Comments go only where a setting goes that is directly below them, and keep their order.
  [[nodiscard]] bool CommentsAreKept(const Wishes& wishes, const PlainFile& before,
                                     const PlainFile& after) const {
    std::vector<std::string> kept;  // from the last on
    bool blockGoes = false;
    for (size_t i = before.lines.size(); i-- > 0;) {
      const PlainFile::Line& line = before.lines[i];
      if (line.kind == PlainFile::Kind::kSetting) {
        blockGoes = Find(wishes.settings, base_.Text(line.name)) == nullptr;
      } else if (line.kind != PlainFile::Kind::kComment) {
        blockGoes = false;
      } else if (!blockGoes) {
        kept.push_back(line.bytes);
      }
    }
    for (const PlainFile::Line& line : after.lines) {
      if (!kept.empty() && line.bytes == kept.back()) kept.pop_back();
    }
    return kept.empty();
  }

  /// The line of a setting changes only if that is to change, unless there are others of its name.
  [[nodiscard]] bool UnconcernedLinesStay(const Wishes& wishes, const PlainFile& before,
                                          const PlainFile& after) const {
    std::map<std::string, int> counts;
    std::set<std::string> kept;
    for (const PlainFile::Line& line : after.lines) kept.insert(line.bytes);
    for (const PlainFile::Line& line : before.lines) {
      if (line.kind == PlainFile::Kind::kSetting) ++counts[line.name];
    }
    return std::all_of(before.lines.begin(), before.lines.end(), [&](const auto& line) {
      if (line.kind != PlainFile::Kind::kSetting || counts[line.name] > 1) return true;
      const Wishes::Setting* wish = Find(wishes.settings, base_.Text(line.name));
      const Wishes::Setting* was = Find(original_.settings, base_.Text(line.name));
      const bool same = wish != nullptr && wish->active == was->active && wish->value == was->value;
      return !same || kept.contains(line.bytes);
    });
  }

  static bool SettingsAreAsWanted(const Wishes& wishes, const Wishes& readAgain) {
    for (const Wishes::Setting& wish : wishes.settings) {
      const Wishes::Setting* read = Find(readAgain.settings, wish.name);
      if (read == nullptr || read->value != ReadBackValue(wish.value)) return false;
      if (read->active != wish.active) return false;
    }
    return readAgain.settings.size() == wishes.settings.size();
  }

  [[nodiscard]] bool EntriesAreAsWanted(const Wishes& wishes, const Wishes& readAgain) const {
    std::map<String, bool> wanted, read;
    for (const Wishes::Entry& wish : wishes.entries) {
      const bool there =
          wish.on || options_.saveCommentedSeries || Find(original_.entries, wish.name) != nullptr;
      if (!wish.name.empty() && there) wanted[wish.name] = wish.on;
    }
    for (const Wishes::Entry& entry : readAgain.entries) {
      if (!entry.name.empty()) read[entry.name] |= entry.on;
    }
    return wanted == read;
  }

  ConfFile base_;
  ConfFile other_;
  Wishes original_;  // what the base has
  Pick pick_;
  Options options_;
  Language language_;
};

}  // namespace quenmar
