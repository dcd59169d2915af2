// What the lists of the updater window show.
#include <QLabel>
#include <set>

#include "merge/SettingFilter.h"
#include "updater/ParameterList.h"
#include "updater/frmUpdaterX.h"
#include "widgets/DefaultRemark.h"
#include "widgets/FindBar.h"
#include "widgets/ListDelegate.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

/// @return two remarks as one; either may be empty.
String Joined(const String& first, const String& second) {
  return first.empty() || second.empty() ? first + second : first + u"; " + second;
}

}  // namespace

void frmUpdaterX::FillListsTicking(const std::array<std::vector<String>, 3>& ticked) {
  const QWidget* const focused = focusWidget();
  std::array<bool, 2> haveRemarks{};  // by page
  for (const int k : {kNew, kKept, kObsolete}) {
    std::vector<SettingRow> rows;
    std::multiset<StringView> unticked(ticked[k].begin(), ticked[k].end());
    for (const Field& field : Tree(k).Fields()) {
      SettingRow row = RowOf(k, field);
      row.ticked = k == kNew && Merge().IsMandatory(field.Name());
      if (const auto tick = unticked.find(field.Name()); !row.ticked && tick != unticked.end()) {
        unticked.erase(tick);
        row.ticked = true;
      }
      haveRemarks[k == kKept ? kCurrentPage : kChangesPage] |= !row.remark.empty();
      rows.push_back(std::move(row));
    }
    lists_[k]->Fill(rows);
  }
  for (size_t page = 0; page < remarks_.size(); ++page) {
    remarks_[page]->setVisible(haveRemarks[page]);
  }
  if (lists_[changesList_]->count() == 0) {
    changesList_ = lists_[kNew]->count() > 0 ? kNew : kObsolete;
  }
  ShowSelected();
  UpdateChangesPage();
  ShowCount();
  // A control that becomes disabled passes the focus on; the list beside it gets it.
  if (focused == nullptr || focusWidget() != focused) lists_[ShownList()]->setFocus();
}

void frmUpdaterX::FillAgain(std::optional<int> unticked) {
  std::array<std::vector<String>, 3> ticked;
  for (const int k : {kNew, kKept, kObsolete}) {
    ticked[k] = k == unticked ? lists_[k]->TickedNames(false) : lists_[k]->TickedNames();
  }
  FillListsTicking(ticked);
}

SettingRow frmUpdaterX::RowOf(int list, const Field& field) const {
  const StringView name = field.Name();
  const SettingFilter filter = find_->Filter();
  const auto original = Merge().DistributionSettings().Fields().Field(name);
  const String comment = filter.ShowsAll() ? String() : Merge().Comment(name);
  const SettingFilter::Item item = Merge().ItemOf(field, *original, comment);
  SettingRow row;
  row.name = name;
  row.value = item.value;
  row.originalValue = item.originalValue;
  row.remark = RemarkOf(list, name);
  row.shortRemark = ShortRemarkOf(list, name);
  if (const auto change = DefaultChangeIn(list, name)) {
    row.mark = DefaultMark(change->kind);
    row.shortRemark = Joined(OldDefaultRemark(*change, TheLanguage()), row.shortRemark);
  }
  if (list != kNew) row.need = NeedOf(name);
  row.changed = item.IsChanged();
  row.commentedOut = item.commentedOut;
  row.staysCommentedOut = Merge().StateOf(name) == FileMerge::SettingState::kCommentedOut;
  row.shown = filter.Shows(item);
  return row;
}

std::optional<DefaultChange> frmUpdaterX::DefaultChangeIn(int list, StringView name) const {
  return list == kKept ? Merge().DefaultChangeOf(name) : std::nullopt;
}

String frmUpdaterX::RemarkOf(int list, StringView name) const {
  const auto change = DefaultChangeIn(list, name);
  return Joined(change ? DefaultRemark(*change, TheLanguage()) : String(),
                ShortRemarkOf(list, name));
}

String frmUpdaterX::ShortRemarkOf(int list, StringView name) const {
  if (list != kNew) return StateRemark(Merge().StateOf(name), TheLanguage());
  const auto old = Merge().RenamedFrom(name);
  return old ? FinishedText(TheLanguage().Text(Message::kPerhapsRenamed), {*old}) : String();
}

void frmUpdaterX::RefreshRows(int list, const std::vector<String>& names) {
  const std::set<StringView> wanted(names.begin(), names.end());
  const int page = list == kKept ? kCurrentPage : kChangesPage;
  std::map<int, SettingRow> rows;
  int index = 0;
  for (const Field& field : Tree(list).Fields()) {
    if (wanted.contains(field.Name())) {
      const SettingRow& row = rows[index] = RowOf(list, field);
      if (!row.remark.empty()) remarks_[page]->show();
    }
    ++index;
  }
  lists_[list]->Refresh(rows);
  ShowHints();
  UpdateButtons();
}

void frmUpdaterX::ShowCount() {
  int shown = 0;
  int all = 0;
  for (const int k : {kNew, kKept, kObsolete}) {
    if ((k == kKept) != (ShownList() == kKept)) continue;
    shown += lists_[k]->ShownCount();
    all += lists_[k]->count();
  }
  find_->ShowCount(shown, all);
}

/// The list that comment and value belong to keeps its highlight.
void frmUpdaterX::ShowLead() {
  for (const int k : {kNew, kKept, kObsolete}) {
    ListDelegate::SetPale(lists_[k], k != ShownList());
  }
}

}  // namespace quenmar
