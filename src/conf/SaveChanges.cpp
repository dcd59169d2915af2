#include "conf/SaveChanges.h"

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "conf/Functions.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

using ChangeKind = SaveChange::Kind;

/// What makes two lines the same entry: the name, and for series entries the value that counts.
using Key = std::pair<String, String>;

/// A setting or series line of one of the two files. Long texts are views of the file.
struct Entry {
  Key key;
  const ConfFile* file;
  std::string_view line;   // with its blanks
  std::string_view value;  // remarks included
  bool commented;
  bool series;

  [[nodiscard]] const String& Name() const { return key.first; }
  [[nodiscard]] String Value() const { return file->Text(value); }
};

Entry ToEntry(const ConfFile& file, const ConfLine& line) {
  const bool series = line.kind == ConfLine::Kind::kSeriesEntry;
  return {{file.Text(line.name), series ? file.Text(line.value) : String()},
          &file,
          line.bytes,
          line.written,
          line.commented,
          series};
}

/// @return whether the same part of two entries is the same text.
bool AreSame(const Entry& one, const Entry& other, std::string_view Entry::*part) {
  if (one.file->Charset() == other.file->Charset()) return one.*part == other.*part;
  return one.file->Text(one.*part) == other.file->Text(other.*part);
}

/// The lines of one key that have no new line yet, as indexes in file order.
struct Waiting {
  std::deque<size_t> active;
  std::deque<size_t> commented;
  int newLines = 0;

  std::deque<size_t>& In(bool state) { return state ? commented : active; }
};

class Comparison {
 public:
  Comparison(const ConfFile& before, const ConfFile& after, StringView series)
      : sameCharset_(before.Charset() == after.Charset()) {
    after.ForEachLine(series, [&](const ConfLine& line) { TakeNew(after, line); });
    before.ForEachLine(series, [&](const ConfLine& line) { TakeOld(before, line); });
    for (const auto& [comment, count] : newComments_) result_.addedCommentLines += count;
    FindPartners();
  }

  SaveChanges Result() {
    std::optional<size_t> last;
    for (size_t i = 0; i < new_.size(); ++i) {
      if (!partners_[i]) {
        Report(ChangeKind::kAdded, new_[i], {}, new_[i].Value());
        continue;
      }
      Compare(old_[*partners_[i]], new_[i]);
      result_.reordered |= last > partners_[i];
      last = partners_[i];
    }
    ReportWhatGoes();
    return std::move(result_);
  }

  /// @return whether the file has blank lines, of which the program's own form has none.
  [[nodiscard]] bool HadBlankLines() const { return hadBlankLines_; }

 private:
  void TakeNew(const ConfFile& file, const ConfLine& line) {
    if (line.IsEntry()) {
      new_.push_back(ToEntry(file, line));
      ++waiting_[new_.back().key].newLines;
    } else if (line.kind != ConfLine::Kind::kBlank) {
      ++newComments_[CommentKey(file, line)];
    }
  }

  void TakeOld(const ConfFile& file, const ConfLine& line) {
    result_.otherLineEnds |= line.end != LineEnd::kCrLf;
    if (line.IsEntry()) {
      old_.push_back(ToEntry(file, line));
      waiting_[old_.back().key].In(line.commented).push_back(old_.size() - 1);
    } else if (line.kind == ConfLine::Kind::kBlank) {
      hadBlankLines_ = true;
    } else if (const auto same = newComments_.find(CommentKey(file, line));
               same != newComments_.end() && same->second > 0) {
      --same->second;
    } else {
      ++result_.lostCommentLines;
    }
  }

  /// @return what comments are compared by: their bytes or, in two character sets, their texts.
  std::string_view CommentKey(const ConfFile& file, const ConfLine& line) {
    if (sameCharset_) return line.text;
    return texts_.emplace_back(ToUtf8(file.Text(line.text)));
  }

  /// Of several new lines of one key each continues one of its own state first. A single one
  /// continues the active line, beside which a commented-out one is only a comment.
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
      Report(KindOfSwitch(entry), entry, old.Value(), entry.Value());
    } else if (!AreSame(old, entry, &Entry::value)) {
      Report(ChangeKind::kChanged, entry, old.Value(), entry.Value());
    } else {
      result_.reformatted |= !AreSame(old, entry, &Entry::line);
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
        ++result_.lostCommentLines;  // beside a line that stays it was only a comment
      } else {
        Report(ChangeKind::kRemoved, entry, entry.Value(), {});
      }
    }
  }

  static ChangeKind KindOfSwitch(const Entry& entry) {
    if (entry.commented) return ChangeKind::kSwitchedOff;
    return entry.series ? ChangeKind::kSwitchedOn : ChangeKind::kActivated;
  }

  void Report(ChangeKind kind, const Entry& entry, String oldValue, String newValue) {
    result_.changes.push_back(
        {kind, entry.Name(), std::move(oldValue), std::move(newValue), entry.commented});
  }

  std::vector<Entry> old_;
  std::vector<Entry> new_;
  std::vector<std::optional<size_t>> partners_;  // of the new entries among the old ones
  std::map<Key, Waiting> waiting_;
  bool hadBlankLines_ = false;
  bool sameCharset_;
  std::deque<std::string> texts_;
  std::map<std::string_view, int> newComments_;  // how many there are of each
  SaveChanges result_;
};

/// Which kinds of line ends a file has.
struct LineEnds {
  bool crLf = false;
  bool other = false;
};

LineEnds EndsOf(const ConfFile& file) {
  LineEnds ends;
  ConfLines lines(file.Body());
  for (std::string_view line; lines.Next(line);) {
    if (lines.End() == LineEnd::kNone) continue;
    (lines.End() == LineEnd::kCrLf ? ends.crLf : ends.other) = true;
  }
  return ends;
}

/// Layouts that keep lines change the file as a whole only where they take another file's lines.
void ListEffectsOfLayout(const ConfFile& before, const ConfFile& after, SaveChanges& changes) {
  const LineEnds now = EndsOf(before);
  const LineEnds then = EndsOf(after);
  changes.otherLineEnds = now.other && !then.other && then.crLf;
  changes.lineFeeds = now.crLf && !then.crLf && then.other;
  if (before.Bytes().empty()) return;
  changes.markComes = after.Encoding().mark && !before.Encoding().mark;
  const bool fits = before.Encoding().ascii || after.Encoding().ascii;
  if (!fits && before.Charset() != after.Charset()) changes.newCharset = after.Charset();
}

}  // namespace

bool SaveChanges::Empty() const {
  return changes.empty() && lostCommentLines == 0 && addedCommentLines == 0 && !reordered &&
         !reformatted && !otherLineEnds && !lineFeeds && !markGoes && !markComes && !newCharset;
}

SaveChanges ListSaveChanges(const ConfFile& before, const ConfFile& after, StringView series,
                            Layout layout) {
  if (before.Bytes() == after.Bytes()) return {};
  Comparison comparison(before, after, series);
  SaveChanges changes = comparison.Result();
  changes.markGoes = before.Encoding().mark && !after.Encoding().mark;
  if (layout == Layout::kSettings) {
    changes.reformatted |= comparison.HadBlankLines();
  } else {
    ListEffectsOfLayout(before, after, changes);
  }
  changes.reformatted |= changes.Empty();  // such as blank lines
  return changes;
}

std::vector<String> WholeFileEffects(const SaveChanges& changes, const Language& language) {
  std::vector<String> effects;
  for (const auto& [holds, key] : {std::pair(changes.reordered, Message::kOrderChanges),
                                   std::pair(changes.reformatted, Message::kLinesReformatted),
                                   std::pair(changes.otherLineEnds, Message::kLineEndsChange),
                                   std::pair(changes.lineFeeds, Message::kLineEndsBecomeLf),
                                   std::pair(changes.markGoes, Message::kMarkGoes),
                                   std::pair(changes.markComes, Message::kMarkComes)}) {
    if (holds) effects.push_back(FinishedText(language.Text(key)));
  }
  if (changes.newCharset) {
    effects.push_back(
        FinishedText(language.Text(Message::kCharsetChanges), {CharsetName(*changes.newCharset)}));
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
    const bool switched = change.kind == ChangeKind::kActivated ||
                          change.kind == ChangeKind::kSwitchedOn ||
                          change.kind == ChangeKind::kSwitchedOff;
    if (change.kind != ChangeKind::kAdded) {
      add(u"- ", change.commented != switched, change, change.oldValue);
    }
    if (change.kind != ChangeKind::kRemoved) add(u"+ ", change.commented, change, change.newValue);
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
