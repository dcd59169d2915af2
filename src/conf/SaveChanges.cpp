#include "conf/SaveChanges.h"

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "conf/ConfLine.h"
#include "conf/ConfText.h"
#include "conf/Functions.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

using Kind = SaveChange::Kind;

/// What makes two lines the same entry: the name, and for series entries the value that counts.
using Key = std::pair<StringView, StringView>;

/// A setting or series line of one of the two texts.
struct Entry {
  Key key;
  StringView line;  // as it stands
  StringView name;
  StringView value;  // remarks included
  bool commented;
  bool repeatable;
};

Entry ToEntry(StringView line, const ConfLine& parsed, StringView series) {
  const bool repeatable = IsRepeatable(parsed.name, series);
  const StringView entryValue = repeatable ? EffectiveValue(parsed.value) : StringView();
  return {{parsed.name, entryValue}, line, parsed.name, parsed.value, parsed.commented, repeatable};
}

/// The lines of one key that wait for those which they become, as indexes in file order.
struct Waiting {
  std::deque<size_t> active;
  std::deque<size_t> commented;
  int newLines = 0;

  std::deque<size_t>& In(bool state) { return state ? commented : active; }
};

class Comparison {
 public:
  Comparison(StringView oldText, const std::vector<String>& newLines, StringView series)
      : series_(series) {
    TakeOld(oldText);
    for (const String& line : newLines) new_.push_back(ToEntry(line, ParseConfLine(line), series));
    for (const Entry& entry : new_) ++waiting_[entry.key].newLines;
    FindPartners();
  }

  SaveChanges Result() {
    std::optional<size_t> last;
    for (size_t i = 0; i < new_.size(); ++i) {
      if (!partners_[i]) {
        Report(Kind::kAdded, new_[i], {}, new_[i].value);
        continue;
      }
      Compare(old_[*partners_[i]], new_[i]);
      result_.reordered |= last > partners_[i];
      last = partners_[i];
    }
    ReportWhatGoes();
    return std::move(result_);
  }

 private:
  void TakeOld(StringView text) {
    ConfLines lines(text, ConfLines::LineFeed::kEndsLine);
    for (StringView line; lines.Next(line);) {
      result_.otherLineEnds |= lines.LineEnd() != ConfLines::End::kCrLf;
      const ConfLine parsed = ParseConfLine(Trim(line));
      if (IsEntry(parsed)) {
        old_.push_back(ToEntry(line, parsed, series_));
        waiting_[old_.back().key].In(parsed.commented).push_back(old_.size() - 1);
      } else if (Trim(line).empty()) {
        result_.reformatted = true;
      } else {
        ++result_.lostCommentLines;
      }
    }
  }

  /// Of several new lines of one key each continues one of its own state first. A single one
  /// continues the active line, beside which a commented-out one is but a comment.
  void FindPartners() {
    partners_.resize(new_.size());
    for (const bool sameState : {true, false}) {
      for (size_t i = 0; i < new_.size(); ++i) {
        Waiting& waiting = waiting_.at(new_[i].key);
        const bool commented = waiting.newLines > 1 ? new_[i].commented == sameState : !sameState;
        std::deque<size_t>& candidates = waiting.In(commented);
        if (partners_[i] || candidates.empty()) continue;
        partners_[i] = candidates.front();
        candidates.pop_front();
      }
    }
  }

  void Compare(const Entry& old, const Entry& entry) {
    if (old.commented != entry.commented) {
      Report(KindOfSwitch(entry), entry, old.value, entry.value);
    } else if (old.value != entry.value) {
      Report(Kind::kChanged, entry, old.value, entry.value);
    } else {
      result_.reformatted |= old.line != entry.line;
    }
  }

  void ReportWhatGoes() {
    std::set<size_t> left;
    for (const auto& [key, waiting] : waiting_) {
      left.insert(waiting.active.begin(), waiting.active.end());
      left.insert(waiting.commented.begin(), waiting.commented.end());
    }
    for (const size_t index : left) {
      const Entry& entry = old_[index];
      if (entry.commented && waiting_.at(entry.key).newLines > 0) {
        ++result_.lostCommentLines;  // beside a line that stays it was but a comment
      } else {
        Report(Kind::kRemoved, entry, entry.value, {});
      }
    }
  }

  /// A commented-out note or example is comment text, unless the option makes it a series entry.
  [[nodiscard]] bool IsEntry(const ConfLine& line) const {
    const bool remark = line.commented && IsRemarkName(line.name);
    return line.setting && (!remark || IsRepeatable(line.name, series_));
  }

  static Kind KindOfSwitch(const Entry& entry) {
    if (!entry.repeatable) return Kind::kActivated;
    return entry.commented ? Kind::kSwitchedOff : Kind::kSwitchedOn;
  }

  void Report(Kind kind, const Entry& entry, StringView oldValue, StringView newValue) {
    result_.changes.push_back(
        {kind, String(entry.name), String(oldValue), String(newValue), entry.commented});
  }

  StringView series_;
  std::vector<Entry> old_;
  std::vector<Entry> new_;
  std::vector<std::optional<size_t>> partners_;  // of the new entries among the old ones
  std::map<Key, Waiting> waiting_;
  SaveChanges result_;
};

}  // namespace

bool SaveChanges::Empty() const {
  return changes.empty() && lostCommentLines == 0 && !reordered && !reformatted && !otherLineEnds &&
         !markGoes;
}

SaveChanges ListSaveChanges(std::string_view oldBytes, const std::vector<String>& newLines,
                            std::string_view newBytes, StringView series) {
  if (oldBytes == newBytes) return {};
  auto old = DecodeConfText(oldBytes);
  if (!old) old = ConfText{FromWindows1252(oldBytes)};  // whatever it is, it goes
  SaveChanges changes = Comparison(old->text, newLines, series).Result();
  changes.markGoes = old->mark;
  changes.reformatted |= changes.Empty();  // such as another character set
  return changes;
}

std::vector<String> WholeFileEffects(const SaveChanges& changes, const Language& language) {
  std::vector<String> effects;
  for (const auto& [holds, key] : {std::pair(changes.reordered, Message::kOrderChanges),
                                   std::pair(changes.reformatted, Message::kLinesReformatted),
                                   std::pair(changes.otherLineEnds, Message::kLineEndsChange),
                                   std::pair(changes.markGoes, Message::kMarkGoes)}) {
    if (holds) effects.push_back(FinishedText(language.Text(key)));
  }
  return effects;
}

String DiffText(const SaveChanges& changes, const Language& language) {
  String text;
  const auto add = [&text](StringView sign, bool commented, const SaveChange& change,
                           StringView value) {
    text += String(sign) + (commented ? u"//" : u"") + change.name + u": " + String(value) +
            String(kLineEnd);
  };
  for (const SaveChange& change : changes.changes) {
    const bool switched = change.kind == Kind::kActivated || change.kind == Kind::kSwitchedOn ||
                          change.kind == Kind::kSwitchedOff;
    if (change.kind != Kind::kAdded) {
      add(u"- ", change.commented != switched, change, change.oldValue);
    }
    if (change.kind != Kind::kRemoved) add(u"+ ", change.commented, change, change.newValue);
  }
  if (changes.lostCommentLines > 0) {
    text += u"- // (" + ToText(changes.lostCommentLines) + u")" + String(kLineEnd);
  }
  for (const String& effect : WholeFileEffects(changes, language)) {
    text += effect + String(kLineEnd);
  }
  return text;
}

}  // namespace quenmar
