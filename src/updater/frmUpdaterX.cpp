#include "updater/frmUpdaterX.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>
#include <functional>
#include <utility>

#include "conf/Functions.h"
#include "updater/ParameterList.h"
#include "widgets/FindBar.h"
#include "widgets/ListDelegate.h"
#include "widgets/QtText.h"
#include "widgets/SeriesTabs.h"
#include "widgets/ValueEdit.h"

namespace quenmar {

using namespace message_style;

namespace {

/// Gives an editor the value of its list's current item; without one it is empty and takes no keys.
void LoadEditor(ValueEdit* editor, const ParameterList& list, StringView value) {
  const QSignalBlocker silence(editor);
  const auto name = list.CurrentName();
  editor->setEnabled(name.has_value());
  editor->ShowValue(name ? ToQString(*name) : QString(), ToQString(value));
}

}  // namespace

frmUpdaterX::frmUpdaterX(FileContext context, QWidget* parent)
    : FileWindow(std::move(context), parent) {
  MakeControls();
  NameControls();
  BuildChangesPage();
  BuildCurrentPage();
  BuildWindow();
  OrderTabs();
  ConnectControls();
}

// The controls report as they are hidden, so the window must still be whole.
frmUpdaterX::~frmUpdaterX() { hide(); }

void frmUpdaterX::ConnectControls() {
  ConnectLists();
  ConnectEditors();
  ConnectFindBar();
  connect(helps_[0], &QPushButton::clicked, this,
          [this] { Ask(Message::kNewSettingsHelp, kInformation); });
  connect(helps_[1], &QPushButton::clicked, this,
          [this] { Ask(Message::kObsoleteSettingsHelp, kInformation); });
  connect(addMandatory_, &QAction::triggered, this, &frmUpdaterX::AddMandatory);
  connect(takeOldValue_, &QAction::triggered, this, &frmUpdaterX::TakeOldValue);
  connect(switch_, &QAction::triggered, this, &frmUpdaterX::Switch);
  connect(takeNewDefault_, &QAction::triggered, this, &frmUpdaterX::TakeNewDefault);
  connect(takeAllDefaults_, &QAction::triggered, this, &frmUpdaterX::TakeAllDefaults);
  connect(tabLists_, &QTabWidget::currentChanged, this, [this] {
    ShowSelected();
    ShowCount();
  });
  connect(series_, &SeriesTabs::ItemChecked, this, [this](int group, int item, bool checked) {
    Merge().SetEntry(group, item, checked);
    ShowEntries(series_);
    ShowChanged();
  });
  connect(apply_, &QPushButton::clicked, this, &frmUpdaterX::Apply);
  connect(close_, &QPushButton::clicked, this, &frmUpdaterX::reject);
  // The comments are never about a series.
  connect(qApp, &QApplication::focusChanged, series_, [series = series_] {
    for (QListWidget* const list : series->Lists()) ListDelegate::SetPale(list, !list->hasFocus());
  });
}

void frmUpdaterX::ConnectLists() {
  for (const int k : {kNew, kKept, kObsolete}) {
    connect(lists_[k], &ParameterList::Chosen, this, [this, k] {
      if (k != kKept) changesList_ = k;
      ShowSelected();
    });
    connect(lists_[k], &QWidget::customContextMenuRequested, this,
            [this, k](QPoint place) { ShowListMenu(k, place); });
    connect(moves_[k], &QPushButton::clicked, this, [this, k] { Move(k); });
  }
  connect(lists_[kNew], &ParameterList::ItemTicked, this, &frmUpdaterX::UndoTick);
  connect(lists_[kKept], &QListWidget::itemSelectionChanged, this, &frmUpdaterX::UpdateButtons);
  for (const int k : {kKept, kObsolete}) {
    connect(lists_[k], &ParameterList::ItemTicked, this, &frmUpdaterX::UpdateButtons);
  }
  for (const int k : {kNew, kObsolete}) {
    connect(selectAlls_[k], &QPushButton::clicked, this, [this, k] { SelectAll(k); });
  }
}

void frmUpdaterX::ConnectEditors() {
  for (const auto& [editor, list] :
       {std::pair(originalValue_, kNew), std::pair(actualValue_, kKept)}) {
    editor->SetWarning(TheLanguage().Text(Message::kReadBackAs));
    connect(editor, &ValueEdit::TypingEnded, this, [this] { Merge().EndTyping(); });
    connect(editor, &QLineEdit::textChanged, this, [this, list = list](const QString& text) {
      const auto name = lists_[list]->CurrentName();
      const auto inMerge = static_cast<FileMerge::List>(list);
      if (!name || !Merge().SetValue(inMerge, *name, FromQString(text))) return;
      ShowChanged();
      RefreshRows(list, {*name});
      LoadEditor(value_, *lists_[changesList_], CurrentValue(changesList_));
    });
  }
  for (ValueEdit* const editor : {originalValue_, actualValue_, value_}) UndoInMerge(editor);
}

void frmUpdaterX::ConnectFindBar() {
  connect(find_, &FindBar::FilterChanged, this, [this] { FillAgain({}); });
  connect(find_, &FindBar::Accepted, this, [this] { lists_[ShownList()]->setFocus(); });
}

void frmUpdaterX::FillSeries() {
  Load(series_);
  series_->setVisible(series_->UsedTabs() > 0);
}

void frmUpdaterX::ShowSelected() {
  LoadEditor(originalValue_, *lists_[kNew], CurrentValue(kNew));
  LoadEditor(actualValue_, *lists_[kKept], CurrentValue(kKept));
  LoadEditor(value_, *lists_[changesList_], CurrentValue(changesList_));
  ShowHints();
  ShowLead();
  UpdateButtons();
  const String name = lists_[ShownList()]->CurrentName().value_or(String());
  ShowComment(comments_, name, Merge().Comment(name));
}

void frmUpdaterX::ShowHints() {
  const std::array<int, 2> selected{changesList_, kKept};
  for (size_t page = 0; page < hints_.size(); ++page) {
    const auto name = lists_[selected[page]]->CurrentName();
    hints_[page]->clear();
    remarks_[page]->clear();
    if (!name) continue;
    remarks_[page]->setText(ToQString(RemarkOf(selected[page], *name)));
    hints_[page]->setText(ToQString(u" [" + NeedOf(*name) + u"]"));
  }
}

/// A button can be pressed exactly while there is something that it would do.
void frmUpdaterX::UpdateButtons() {
  for (const int k : {kNew, kObsolete}) selectAlls_[k]->setEnabled(lists_[k]->ShownCount() > 0);
  const auto fresh = lists_[kNew]->CurrentName();
  moves_[kNew]->setEnabled(fresh.has_value());
  for (const int k : {kKept, kObsolete}) {
    moves_[k]->setEnabled(!lists_[k]->TickedNames(true).empty());
  }
  const bool onChanges = ShownList() != kKept;
  addMandatory_->setEnabled(onChanges && !Merge().MissingMandatory().empty());
  takeOldValue_->setEnabled(onChanges && fresh && Merge().RenamedFrom(*fresh));
  // Saved as settings only, every setting is active.
  switch_->setEnabled(ShownList() != kNew && lists_[ShownList()]->CurrentName() &&
                      Merge().SaveLayout() != Layout::kSettings);
  UpdateDefaultActions();
}

void frmUpdaterX::UpdateDefaultActions() {
  const bool onCurrent = ShownList() == kKept;
  const std::vector<DefaultChange> changes = Merge().DefaultChanges();
  const std::vector<String> names = lists_[kKept]->HighlightedNames();
  const auto isChanged = [this](const String& name) {
    return Merge().DefaultChangeOf(name).has_value();
  };
  takeNewDefault_->setEnabled(onCurrent && std::any_of(names.begin(), names.end(), isChanged));
  takeAllDefaults_->setEnabled(onCurrent && std::any_of(changes.begin(), changes.end(),
                                                        std::mem_fn(&DefaultChange::IsUntouched)));
}

void frmUpdaterX::UpdateChangesPage() {
  const bool changes = Merge().Comparison().HasListChanges();
  tabLists_->setTabEnabled(kChangesPage, changes);
  if (!changes) tabLists_->setCurrentIndex(kCurrentPage);
}

void frmUpdaterX::UndoTick(QListWidgetItem* item) {
  lists_[kNew]->SetTicked(item, Merge().IsMandatory(FromQString(item->text())));
  const Language& language = TheLanguage();
  checkHint_->setText(ToQString(u"Checked: " + language.Text(Message::kMandatory) +
                                u", Unchecked: " + language.Text(Message::kOptional)));
}

void frmUpdaterX::SelectAll(int list) {
  lists_[list]->TickAll();
  UpdateButtons();
}

void frmUpdaterX::Move(int index) {
  int moved = 0;
  if (index == kNew) {
    moved = Merge().Add(lists_[kNew]->HighlightedNames());
  } else if (index == kKept) {
    moved = Merge().Remove(lists_[kKept]->TickedNames(true));
  } else {
    moved = Merge().Restore(lists_[kObsolete]->TickedNames(true));
  }
  if (moved == 0) return;
  ShowChanged();
  FillAgain(index);
}

void frmUpdaterX::AddMandatory() {
  if (Merge().AddMandatory() == 0) return;
  ShowChanged();
  FillAgain(kNew);
}

void frmUpdaterX::TakeOldValue() {
  const auto name = lists_[kNew]->CurrentName();
  if (!name || !Merge().TakeOldValue(*name)) return;
  ShowChanged();
  FillAgain(kNew);
}

void frmUpdaterX::Switch() {
  const int list = ShownList();
  const auto current = lists_[list]->CurrentName();
  if (!current) return;
  const std::vector<String> names = lists_[list]->HighlightedNames();
  SwitchSettings(names, *current, [this, list, &names] { RefreshRows(list, names); });
}

void frmUpdaterX::TakeNewDefault() {
  if (Merge().TakeDefaults(lists_[kKept]->HighlightedNames()) == 0) return;
  ShowChanged();
  FillAgain({});
}

void frmUpdaterX::TakeAllDefaults() {
  if (Merge().TakeUntouchedDefaults() == 0) return;
  ShowChanged();
  FillAgain({});
}

void frmUpdaterX::Apply() {
  Save();
  FillAgain({});  // what was commented out may be active now
}

String frmUpdaterX::Offer() const {
  const bool missing = !Merge().MissingMandatory().empty();
  return missing ? TheLanguage().Text(Message::kAddMissing) : String();
}

void frmUpdaterX::TakeOffer() { AddMandatory(); }

String frmUpdaterX::ClosingRemark() const {
  String names;
  for (const String& name : Merge().TypedNotAdded()) {
    names.append(names.empty() ? StringView() : StringView(u", ")).append(name);
  }
  if (names.empty()) return names;
  return FinishedText(TheLanguage().Text(Message::kNotAdded), {names});
}

void frmUpdaterX::ShowListMenu(int list, QPoint place) {
  QMenu menu;
  if (list == kNew) {
    menu.addActions({takeOldValue_, addMandatory_});
  } else {
    menu.addAction(switch_);
    if (list == kKept) menu.addActions({takeNewDefault_, takeAllDefaults_});
  }
  menu.addSeparator();
  menu.addAction(find_->Action());
  ShowMenu(menu, lists_[list]->viewport()->mapToGlobal(place));
}

void frmUpdaterX::ShowMerge() {
  FillAgain({});
  ShowEntries(series_);
}

int frmUpdaterX::ShownList() const {
  return tabLists_->currentIndex() == kCurrentPage ? kKept : changesList_;
}

const Document& frmUpdaterX::Tree(int list) const {
  return Merge().Tree(static_cast<FileMerge::List>(list));
}

String frmUpdaterX::CurrentValue(int list) const {
  const auto name = lists_[list]->CurrentName();
  return name ? String(Tree(list).Fields().Field(*name)->Value()) : String();
}

}  // namespace quenmar
