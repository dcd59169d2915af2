#include "cli/ChangesText.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "cli/Printable.h"

namespace quenmar {

namespace {

using ChangeKind = SaveChange::Kind;

/// A kind of change as the list names it, padded to one width, and as the summary does.
struct KindText {
  ChangeKind kind;
  const char* mark;
  const char* summary;
};

constexpr std::array kKindTexts = {
    KindText{ChangeKind::kAdded, "added          ", "added"},
    KindText{ChangeKind::kRemoved, "removed        ", "removed"},
    KindText{ChangeKind::kChanged, "changed        ", "changed"},
    KindText{ChangeKind::kActivated, "becomes active ", "now active"},
    KindText{ChangeKind::kSwitchedOn, "switched on    ", "switched on"},
    KindText{ChangeKind::kSwitchedOff, "switched off   ", "switched off"},
};

std::string ValuesOf(const SaveChange& change) {
  std::string oldValue = Printable(change.oldValue);
  std::string newValue = Printable(change.newValue);
  if (change.kind == ChangeKind::kAdded || oldValue == newValue) return newValue;
  if (change.kind == ChangeKind::kRemoved) return oldValue;
  return oldValue + " -> " + newValue;
}

/// @return whether the change gives a setting another value. Another line of its name, which is
/// removed or added, has nothing to do with it.
bool GivesValue(const SaveChange& change) {
  return change.kind == ChangeKind::kChanged || change.kind == ChangeKind::kActivated;
}

}  // namespace

void PrintChanges(const SaveChanges& changes, const std::set<String>& taken,
                  const Language& language, std::ostream& out) {
  for (const SaveChange& change : changes.changes) {
    const bool lineCommented = change.commented && (change.kind == ChangeKind::kAdded ||
                                                    change.kind == ChangeKind::kRemoved);
    out << kKindTexts[static_cast<size_t>(change.kind)].mark << Printable(change.name) << ": "
        << ValuesOf(change) << (lineCommented ? " (commented out)" : "")
        << (GivesValue(change) && taken.contains(change.name) ? " (new default)" : "") << '\n';
  }
  if (changes.lostCommentLines > 0) {
    out << "comment lines lost: " << changes.lostCommentLines << '\n';
  }
  if (changes.addedCommentLines > 0) {
    out << "comment lines added: " << changes.addedCommentLines << '\n';
  }
  for (const String& effect : WholeFileEffects(changes, language)) {
    out << Printable(effect) << '\n';
  }
  if (changes.Empty()) out << "no changes\n";
}

std::vector<std::string> EffectsOf(const SaveChanges& changes, const Language& language) {
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
  add(changes.addedCommentLines,
      changes.addedCommentLines == 1 ? "comment line added" : "comment lines added");
  for (const String& effect : WholeFileEffects(changes, language)) {
    effects.push_back(Printable(effect));
  }
  return effects;
}

std::string SummaryOf(const SaveChanges& changes, const Language& language) {
  std::string text;
  for (const std::string& effect : EffectsOf(changes, language))
    text += (text.empty() ? "" : ", ") + effect;
  return text.empty() ? "no changes" : text;
}

}  // namespace quenmar
