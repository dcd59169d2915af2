#include "updater/frmUpdaterX.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <utility>

#include "conf/Functions.h"
#include "updater/ParameterList.h"
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

void frmUpdaterX::ConnectControls() {
  for (const int k : {kNew, kActual, kDeleted}) {
    connect(lists_[k], &ParameterList::Chosen, this, [this, k] {
      if (k != kActual) changesList_ = k;
      ShowSelected();
    });
    connect(moves_[k], &QPushButton::clicked, this, [this, k] { Move(k); });
  }
  connect(lists_[kNew], &ParameterList::ItemTicked, this, &frmUpdaterX::UndoTick);
  for (const int k : {kActual, kDeleted}) {
    connect(lists_[k], &ParameterList::ItemTicked, this, &frmUpdaterX::UpdateButtons);
  }
  for (const int k : {kNew, kDeleted}) {
    connect(selectAlls_[k], &QPushButton::clicked, this, [this, k] { SelectAll(k); });
  }
  connect(helps_[0], &QPushButton::clicked, this,
          [this] { Ask(Message::kNewSettingsHelp, kInformation); });
  connect(helps_[1], &QPushButton::clicked, this,
          [this] { Ask(Message::kObsoleteSettingsHelp, kInformation); });
  for (ValueEdit* const editor : {originalValue_, actualValue_}) {
    editor->SetWarning(TheLanguage().Text(Message::kReadBackAs));
  }
  connect(originalValue_, &QLineEdit::textChanged, this, [this](const QString& text) {
    const auto name = lists_[kNew]->CurrentName();
    if (!name || !Merge().SetValue(FileMerge::List::kNew, *name, FromQString(text))) return;
    ShowChanged();
    LoadEditor(value_, *lists_[changesList_], CurrentValue(changesList_));
  });
  connect(actualValue_, &QLineEdit::textChanged, this, [this](const QString& text) {
    const auto name = lists_[kActual]->CurrentName();
    if (!name || !Merge().SetValue(FileMerge::List::kActual, *name, FromQString(text))) return;
    ShowChanged();
  });
  for (QWidget* const control :
       std::initializer_list<QWidget*>{originalValue_, actualValue_, value_, comments_}) {
    UndoInMerge(control);
  }
  for (ValueEdit* const editor : {originalValue_, actualValue_}) {
    connect(editor, &ValueEdit::TypingEnded, this, [this] { Merge().EndTyping(); });
  }
  connect(tabLists_, &QTabWidget::currentChanged, this, &frmUpdaterX::ShowSelected);
  connect(series_, &SeriesTabs::ItemChecked, this, [this](int group, int item, bool checked) {
    Merge().SetEntry(group, item, checked);
    ShowChanged();
  });
  connect(apply_, &QPushButton::clicked, this, &frmUpdaterX::Save);
  connect(close_, &QPushButton::clicked, this, &frmUpdaterX::reject);
}

void frmUpdaterX::FillListsTicking(const std::array<std::vector<String>, 3>& ticked) {
  const QWidget* const focused = focusWidget();
  for (const int k : {kNew, kActual, kDeleted}) {
    CheckList items;
    for (const Field& field : Tree(k).Fields()) {
      const bool checked = k == kNew && Merge().IsMandatory(field.Name());
      items.push_back({String(field.Name()), checked});
    }
    for (const String& name : ticked[k]) SelectListItem(name, items);
    lists_[k]->Fill(items);
  }
  if (lists_[changesList_]->count() == 0) {
    changesList_ = lists_[kNew]->count() > 0 ? kNew : kDeleted;
  }
  UpdateButtons();
  ShowSelected();
  UpdateChangesPage();
  // What has nothing left to do passes the focus on; it belongs beside that.
  if (focused == nullptr || focusWidget() != focused) lists_[ShownList()]->setFocus();
}

void frmUpdaterX::FillSeries() {
  series_->Load(Merge().Series());
  series_->setVisible(series_->UsedTabs() > 0);
}

void frmUpdaterX::ShowSelected() {
  LoadEditor(originalValue_, *lists_[kNew], CurrentValue(kNew));
  LoadEditor(actualValue_, *lists_[kActual], CurrentValue(kActual));
  LoadEditor(value_, *lists_[changesList_], CurrentValue(changesList_));
  ShowHints();
  const auto name = lists_[ShownList()]->CurrentName();
  if (name) {
    ShowComment(comments_, *name, Merge().Comment(*name));
  } else {
    comments_->clear();
  }
}

void frmUpdaterX::ShowHints() {
  const std::array<int, 2> selected{changesList_, kActual};
  for (size_t page = 0; page < hints_.size(); ++page) {
    const auto name = lists_[selected[page]]->CurrentName();
    const Language& language = TheLanguage();
    hints_[page]->clear();
    if (!name) continue;
    const String& state =
        language.Text(Merge().IsMandatory(*name) ? Message::kMandatory : Message::kOptional);
    hints_[page]->setText(ToQString(u" [" + state + u"]"));
  }
}

/// A button can be pressed exactly while there is something that it would do.
void frmUpdaterX::UpdateButtons() {
  for (const int k : {kNew, kDeleted}) selectAlls_[k]->setEnabled(lists_[k]->count() > 0);
  moves_[kNew]->setEnabled(lists_[kNew]->count() > 0);
  for (const int k : {kActual, kDeleted}) {
    moves_[k]->setEnabled(!lists_[k]->TickedNames().empty());
  }
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
    if (const auto name = lists_[kNew]->CurrentName()) moved = Merge().Add({*name});
  } else if (index == kActual) {
    moved = Merge().Remove(lists_[kActual]->TickedNames());
  } else {
    moved = Merge().Restore(lists_[kDeleted]->TickedNames());
  }
  if (moved == 0) return;
  ShowChanged();
  FillAgain(index);
}

void frmUpdaterX::FillAgain(std::optional<int> unticked) {
  std::array<std::vector<String>, 3> ticked;
  for (const int k : {kNew, kActual, kDeleted}) {
    if (k != unticked) ticked[k] = lists_[k]->TickedNames();
  }
  FillListsTicking(ticked);
}

void frmUpdaterX::ShowMerge() {
  FillAgain({});
  series_->ShowChecks(Merge().Series());
}

int frmUpdaterX::ShownList() const {
  return tabLists_->currentIndex() == kCurrentPage ? kActual : changesList_;
}

const Document& frmUpdaterX::Tree(int list) const {
  return Merge().Tree(static_cast<FileMerge::List>(list));
}

String frmUpdaterX::CurrentValue(int list) const {
  const auto name = lists_[list]->CurrentName();
  return name ? String(Tree(list).Fields().Field(*name)->Value()) : String();
}

}  // namespace quenmar
