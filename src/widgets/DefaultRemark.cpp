#include "widgets/DefaultRemark.h"

#include "conf/Functions.h"

namespace quenmar {

StringView DefaultMark(DefaultChange::Kind kind) {
  return kind == DefaultChange::Kind::kDefault ? u"\u25CF" : u"\u25C6";  // a disc, a diamond
}

String DefaultRemark(const DefaultChange& change, const Language& language) {
  const bool untouched = change.IsUntouched();
  return language.Text(untouched ? Message::kDefaultMark : Message::kBothMark) + u"; " +
         OldDefaultRemark(change, language) + u"; " +
         FinishedText(language.Text(Message::kNewDefault), {change.newDefault});
}

String OldDefaultRemark(const DefaultChange& change, const Language& language) {
  return FinishedText(language.Text(Message::kOldDefault), {change.oldDefault});
}

String StateRemark(FileMerge::SettingState state, const Language& language) {
  switch (state) {
    case FileMerge::SettingState::kCommentedOut:
      return language.Text(Message::kCommentedOut);
    case FileMerge::SettingState::kBecomesActive:
      return language.Text(Message::kBecomesActive);
    case FileMerge::SettingState::kActive:
      break;
  }
  return {};
}

}  // namespace quenmar
