#include "conf/LineDiff.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace quenmar {

namespace {

using Lines = std::vector<std::string_view>;

Lines LinesOf(const ConfFile& file) {
  Lines all;
  ConfLines lines(file.Body());
  for (std::string_view line; lines.Next(line);) all.push_back(line);
  return all;
}

/// A line that is in both files.
struct Match {
  size_t oldLine;
  size_t newLine;
};

/// Part of both files: lines from `oldBegin` to before `oldEnd`, and likewise of the new one.
struct Range {
  size_t oldBegin;
  size_t oldEnd;
  size_t newBegin;
  size_t newEnd;
};

/// @return the lines that each file has once in its part, in the order of the old file.
std::vector<Match> UniqueMatches(const Lines& before, const Lines& after, const Range& range) {
  struct Occurrences {
    int inOld = 0;
    int inNew = 0;
    size_t newLine = 0;
  };
  std::unordered_map<std::string_view, Occurrences> known;
  for (size_t i = range.oldBegin; i < range.oldEnd; ++i) ++known[before[i]].inOld;
  for (size_t i = range.newBegin; i < range.newEnd; ++i) {
    Occurrences& line = known[after[i]];
    ++line.inNew;
    line.newLine = i;
  }
  std::vector<Match> matches;
  for (size_t i = range.oldBegin; i < range.oldEnd; ++i) {
    const Occurrences& line = known.at(before[i]);
    if (line.inOld == 1 && line.inNew == 1) matches.push_back({i, line.newLine});
  }
  return matches;
}

/// @return the longest part of the matches whose lines are in the same order in both files.
std::vector<Match> LongestInOrder(const std::vector<Match>& matches) {
  std::vector<size_t> tails;  // the match that ends the best run of each length
  std::vector<size_t> previous(matches.size());
  for (size_t i = 0; i < matches.size(); ++i) {
    const auto place = std::lower_bound(
        tails.begin(), tails.end(), matches[i].newLine,
        [&](size_t tail, size_t newLine) { return matches[tail].newLine < newLine; });
    previous[i] = place == tails.begin() ? i : *(place - 1);
    if (place == tails.end()) {
      tails.push_back(i);
    } else {
      *place = i;
    }
  }
  std::vector<Match> ordered(tails.size());
  size_t at = tails.empty() ? 0 : tails.back();
  for (size_t i = tails.size(); i > 0; --i, at = previous[at]) ordered[i - 1] = matches[at];
  return ordered;
}

class Difference {
 public:
  Difference(const ConfFile& before, const ConfFile& after)
      : before_(LinesOf(before)), after_(LinesOf(after)) {}

  std::vector<LineEdit> Edits() {
    Compare({0, before_.size(), 0, after_.size()});
    return std::move(edits_);
  }

  [[nodiscard]] const Lines& Before() const { return before_; }

 private:
  void Compare(Range range) {
    // Parts that are left; the last one comes first in its files.
    std::vector<Range> parts = {range};
    while (!parts.empty()) {
      range = parts.back();
      parts.pop_back();
      DropEqualEnds(range);
      const std::vector<Match> anchors = LongestInOrder(UniqueMatches(before_, after_, range));
      if (anchors.empty()) {
        Report(range);
        continue;
      }
      Range rest = range;
      for (size_t i = anchors.size(); i > 0; --i) {
        const Match& anchor = anchors[i - 1];
        parts.push_back({anchor.oldLine + 1, rest.oldEnd, anchor.newLine + 1, rest.newEnd});
        rest.oldEnd = anchor.oldLine;
        rest.newEnd = anchor.newLine;
      }
      parts.push_back(rest);
    }
  }

  void DropEqualEnds(Range& range) const {
    while (range.oldBegin < range.oldEnd && range.newBegin < range.newEnd &&
           before_[range.oldBegin] == after_[range.newBegin]) {
      ++range.oldBegin;
      ++range.newBegin;
    }
    while (range.oldBegin < range.oldEnd && range.newBegin < range.newEnd &&
           before_[range.oldEnd - 1] == after_[range.newEnd - 1]) {
      --range.oldEnd;
      --range.newEnd;
    }
  }

  void Report(const Range& range) {
    if (range.oldBegin == range.oldEnd && range.newBegin == range.newEnd) return;
    const auto part = [](const Lines& lines, size_t begin, size_t end) {
      return Lines(lines.begin() + static_cast<std::ptrdiff_t>(begin),
                   lines.begin() + static_cast<std::ptrdiff_t>(end));
    };
    edits_.push_back({range.oldBegin, range.newBegin, part(before_, range.oldBegin, range.oldEnd),
                      part(after_, range.newBegin, range.newEnd)});
  }

  Lines before_;
  Lines after_;
  std::vector<LineEdit> edits_;
};

/// Writes edits that share their context as one part of a unified diff.
class DiffWriter {
 public:
  DiffWriter(const ConfFile& before, const ConfFile& after, const Lines& lines)
      : before_(before), after_(after), lines_(lines) {}

  /// @param first, last the edits of the part
  void Add(const LineEdit* first, const LineEdit* last) {
    const size_t start = first->oldLine - std::min(kContext, first->oldLine);
    const size_t end = std::min(last->oldLine + last->removed.size() + kContext, lines_.size());
    const size_t newStart = first->newLine - (first->oldLine - start);
    size_t added = 0;
    size_t removed = 0;
    for (const LineEdit* edit = first; edit <= last; ++edit) {
      added += edit->added.size();
      removed += edit->removed.size();
    }
    const size_t size = end - start;
    text_ +=
        u"@@ -" + Place(start, size) + u" +" + Place(newStart, size - removed + added) + u" @@\r\n";
    size_t at = start;
    for (const LineEdit* edit = first; edit <= last; ++edit) {
      AddContext(at, edit->oldLine);
      for (const std::string_view line : edit->removed) AddLine(u'-', before_.Text(line));
      for (const std::string_view line : edit->added) AddLine(u'+', after_.Text(line));
      at = edit->oldLine + edit->removed.size();
    }
    AddContext(at, end);
  }

  String Text() && { return std::move(text_); }

  static constexpr size_t kContext = 3;

 private:
  /// @return the place of a part as unified diffs have it: an empty one is named by the line
  /// before.
  static String Place(size_t start, size_t size) {
    return ToText(static_cast<int>(size == 0 ? start : start + 1)) + u"," +
           ToText(static_cast<int>(size));
  }

  void AddContext(size_t begin, size_t end) {
    for (size_t i = begin; i < end; ++i) AddLine(u' ', before_.Text(lines_[i]));
  }

  void AddLine(char16_t sign, const String& line) {
    text_ += sign;
    text_ += line;
    text_ += kLineEnd;
  }

  const ConfFile& before_;
  const ConfFile& after_;
  const Lines& lines_;
  String text_;
};

}  // namespace

std::vector<LineEdit> DiffLines(const ConfFile& before, const ConfFile& after) {
  return Difference(before, after).Edits();
}

String UnifiedDiff(const ConfFile& before, const ConfFile& after) {
  Difference difference(before, after);
  const std::vector<LineEdit> edits = difference.Edits();
  DiffWriter writer(before, after, difference.Before());
  for (size_t first = 0; first < edits.size();) {
    size_t last = first;
    while (last + 1 < edits.size() &&
           edits[last + 1].oldLine - (edits[last].oldLine + edits[last].removed.size()) <=
               2 * DiffWriter::kContext) {
      ++last;
    }
    writer.Add(&edits[first], &edits[last]);
    first = last + 1;
  }
  return std::move(writer).Text();
}

}  // namespace quenmar
