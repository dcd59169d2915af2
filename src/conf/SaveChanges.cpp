#include "conf/SaveChanges.h"

#include <deque>
#include <map>
#include <set>
#include <utility>

#include "conf/ConfLine.h"
#include "conf/ConfReader.h"

namespace quenmar {

namespace {

using Kind = SaveChange::Kind;

/// What makes two lines the same entry: the name, and for series entries the value that counts.
using Key = std::pair<StringView, StringView>;

/// A setting or series line of one of the two texts.
struct Entry {
  Key key;
  StringView name;
  StringView value;  // remarks included
  bool commented;
  bool repeatable;
};

Entry ToEntry(const ConfLine& line, StringView series) {
  const bool repeatable = IsRepeatable(line.name, series);
  const StringView entryValue = repeatable ? EffectiveValue(line.value) : StringView();
  return {{line.name, entryValue}, line.name, line.value, line.commented, repeatable};
}

/// The old lines that wait for their new ones, in file order.
struct Waiting {
  std::deque<const Entry*> active;
  std::deque<const Entry*> commented;
};

class Comparison {
 public:
  Comparison(StringView oldText, StringView series) : series_(series) {
    ConfLines lines(oldText);
    for (StringView line; lines.Next(line);) {
      const ConfLine parsed = ParseConfLine(Trim(line));
      if (IsEntry(parsed)) {
        old_.push_back(ToEntry(parsed, series_));
      } else if (!Trim(line).empty()) {
        ++result_.lostCommentLines;
      }
    }
    for (const Entry& entry : old_) {
      Waiting& waiting = waiting_[entry.key];
      (entry.commented ? waiting.commented : waiting.active).push_back(&entry);
    }
  }

  void TakeNew(StringView line) {
    const Entry entry = ToEntry(ParseConfLine(line), series_);
    kept_.insert(entry.key);
    Waiting& waiting = waiting_[entry.key];
    // An active line is what the new one continues; only where there is none a commented one is.
    std::deque<const Entry*>& partners =
        waiting.active.empty() ? waiting.commented : waiting.active;
    if (partners.empty()) {
      Report(Kind::kAdded, entry, {}, entry.value);
      return;
    }
    const Entry& old = *partners.front();
    partners.pop_front();
    if (old.commented != entry.commented) {
      Report(KindOfSwitch(entry), entry, old.value, entry.value);
    } else if (old.value != entry.value) {
      Report(Kind::kChanged, entry, old.value, entry.value);
    }
  }

  /// @return the result, once all new lines were taken.
  SaveChanges Finish() {
    std::set<const Entry*> left;
    for (const auto& [key, waiting] : waiting_) {
      left.insert(waiting.active.begin(), waiting.active.end());
      left.insert(waiting.commented.begin(), waiting.commented.end());
    }
    for (const Entry& entry : old_) {
      if (!left.contains(&entry)) continue;
      // Beside a line that stays, a commented-out one of the same name was but a comment.
      if (entry.commented && kept_.contains(entry.key)) {
        ++result_.lostCommentLines;
      } else {
        Report(Kind::kRemoved, entry, entry.value, {});
      }
    }
    return std::move(result_);
  }

 private:
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
  std::deque<Entry> old_;
  std::map<Key, Waiting> waiting_;
  std::set<Key> kept_;
  SaveChanges result_;
};

}  // namespace

SaveChanges ListSaveChanges(StringView oldText, const std::vector<String>& newLines,
                            StringView series) {
  const bool bareLineFeeds = [oldText] {
    ConfLines lines(oldText);
    for (StringView line; lines.Next(line);) {
      if (Contains(line, u"\n")) return true;
    }
    return false;
  }();
  const String repaired = bareLineFeeds ? RepairLineEnds(oldText) : String(oldText);
  Comparison comparison(repaired, series);
  for (const String& line : newLines) comparison.TakeNew(line);
  return comparison.Finish();
}

String DiffText(const SaveChanges& changes) {
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
  return text;
}

}  // namespace quenmar
