#include "cli/ChangesText.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "cli/Printable.h"

namespace quenmar {

namespace {

using Kind = SaveChange::Kind;

/// A kind of change as the list names it, padded to one width, and as the summary does.
struct KindText {
  Kind kind;
  const char* mark;
  const char* summary;
};

constexpr std::array kKindTexts = {
    KindText{Kind::kAdded, "added          ", "added"},
    KindText{Kind::kRemoved, "removed        ", "removed"},
    KindText{Kind::kChanged, "changed        ", "changed"},
    KindText{Kind::kActivated, "becomes active ", "now active"},
    KindText{Kind::kSwitchedOn, "switched on    ", "switched on"},
    KindText{Kind::kSwitchedOff, "switched off   ", "switched off"},
};

std::string ValuesOf(const SaveChange& change) {
  std::string oldValue = Printable(change.oldValue);
  std::string newValue = Printable(change.newValue);
  if (change.kind == Kind::kAdded || oldValue == newValue) return newValue;
  if (change.kind == Kind::kRemoved) return oldValue;
  return oldValue + " -> " + newValue;
}

/// @return the effects on the file as a whole, as they are printed.
std::vector<std::string> WholeFileEffects(const SaveChanges& changes) {
  std::vector<std::string> effects;
  if (changes.reordered) effects.emplace_back("order of lines changes");
  if (changes.reformatted) effects.emplace_back("lines are reformatted");
  if (changes.otherLineEnds) effects.emplace_back("line ends become CR LF");
  if (changes.markGoes) effects.emplace_back("the byte order mark goes");
  return effects;
}

}  // namespace

void PrintChanges(const SaveChanges& changes, std::ostream& out) {
  for (const SaveChange& change : changes.changes) {
    const bool lineCommented =
        change.commented && (change.kind == Kind::kAdded || change.kind == Kind::kRemoved);
    out << kKindTexts[static_cast<size_t>(change.kind)].mark << Printable(change.name) << ": "
        << ValuesOf(change) << (lineCommented ? " (commented out)" : "") << '\n';
  }
  if (changes.lostCommentLines > 0) {
    out << "comment lines lost: " << changes.lostCommentLines << '\n';
  }
  for (const std::string& effect : WholeFileEffects(changes)) out << effect << '\n';
  if (changes.Empty()) out << "no changes\n";
}

std::vector<std::string> EffectsOf(const SaveChanges& changes) {
  std::vector<std::string> effects;
  const auto add = [&effects](auto count, const char* what) {
    if (count > 0) effects.push_back(std::to_string(count) + " " + what);
  };
  for (const KindText& kind : kKindTexts) {
    add(std::count_if(changes.changes.begin(), changes.changes.end(),
                      [&kind](const SaveChange& change) { return change.kind == kind.kind; }),
        kind.summary);
  }
  add(changes.lostCommentLines,
      changes.lostCommentLines == 1 ? "comment line lost" : "comment lines lost");
  const std::vector<std::string> whole = WholeFileEffects(changes);
  effects.insert(effects.end(), whole.begin(), whole.end());
  return effects;
}

std::string SummaryOf(const SaveChanges& changes) {
  std::string text;
  for (const std::string& effect : EffectsOf(changes)) text += (text.empty() ? "" : ", ") + effect;
  return text.empty() ? "no changes" : text;
}

}  // namespace quenmar
