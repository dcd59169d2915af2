#include "updater/frmUpdaterX.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <utility>

#include "conf/Functions.h"
#include "files/Files.h"
#include "updater/ParameterList.h"
#include "widgets/ApplyChanges.h"
#include "widgets/QtText.h"
#include "widgets/SeriesTabs.h"

namespace quenmar {

using namespace message_style;

namespace {

// What `Changed` is set to.
constexpr int kSaved = 0;
constexpr int kMoved = 1;
constexpr int kValueEdited = 2;
constexpr int kSeriesTicked = 4;

/// Gives an editor the value of its list's current item; without one it is empty and takes no keys.
void LoadEditor(QLineEdit* editor, const ParameterList& list, StringView value) {
  const QSignalBlocker silence(editor);
  editor->setEnabled(list.currentItem() != nullptr);
  const QString text = ToQString(value);
  if (editor->text() != text) editor->setText(text);
}

}  // namespace

frmUpdaterX::frmUpdaterX(FileContext context, QWidget* parent)
    : QDialog(parent),
      context_(std::move(context)),
      comparison_(context_.documents, context_.options.IsSorted()) {
  MakeControls();
  NameControls();
  BuildChangesPage();
  BuildCurrentPage();
  BuildWindow();
  OrderTabs();
  ConnectControls();
  comparison_.FillNewFields();
  comparison_.FillActualFields();
  comparison_.FillDeletedFields();
  UpdateChangesPage();
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
  connect(helps_[0], &QPushButton::clicked, this, [this] { Ask(LNG26, kInformation); });
  connect(helps_[1], &QPushButton::clicked, this, [this] { Ask(LNG27, kInformation); });
  connect(originalValue_, &QLineEdit::textChanged, this, [this](const QString& text) {
    const auto name = lists_[kNew]->CurrentName();
    if (!name || !comparison_.SetNewValue(*name, FromQString(text))) return;
    LoadEditor(value_, *lists_[changesList_], CurrentValue(changesList_));
  });
  connect(actualValue_, &QLineEdit::textChanged, this, [this](const QString& text) {
    const auto name = lists_[kActual]->CurrentName();
    if (!name || !comparison_.SetActualValue(*name, FromQString(text))) return;
    SetChanged(kValueEdited);
  });
  connect(tabLists_, &QTabWidget::currentChanged, this, &frmUpdaterX::ShowSelected);
  connect(series_, &SeriesTabs::ItemChecked, this, [this] { SetChanged(kSeriesTicked); });
  connect(apply_, &QPushButton::clicked, this, &frmUpdaterX::Apply);
  connect(close_, &QPushButton::clicked, this, &frmUpdaterX::reject);
}

void frmUpdaterX::FillLists() {
  const auto mandatory = [this](StringView name) { return comparison_.StartsChecked(name); };
  const auto unticked = [](StringView) { return false; };
  lists_[kNew]->Fill(comparison_.NewFields(), mandatory);
  lists_[kActual]->Fill(comparison_.ActualFields(), unticked);
  lists_[kDeleted]->Fill(comparison_.DeletedFields(), unticked);
  if (lists_[changesList_]->count() == 0) {
    changesList_ = lists_[kNew]->count() > 0 ? kNew : kDeleted;
  }
  UpdateButtons();
  ShowSelected();
  if (focusWidget() == nullptr) lists_[ShownList()]->setFocus();
}

void frmUpdaterX::FillSeries() {
  series_->Load(comparison_.FillSeries(context_.messages, context_.language));
  series_->setVisible(series_->UsedTabs() > 0);
}

void frmUpdaterX::reject() {
  if (changed_ > kSaved && Ask(LNG21, kYesNo | kQuestion | kDefaultButton2) != Button::kYes) return;
  QDialog::reject();
}

void frmUpdaterX::keyPressEvent(QKeyEvent* event) {
  // No button is the window's default: Enter in an editor must not start what nobody looks at.
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) button->click();
    return;
  }
  QDialog::keyPressEvent(event);
}

void frmUpdaterX::ShowSelected() {
  LoadEditor(originalValue_, *lists_[kNew], CurrentValue(kNew));
  LoadEditor(actualValue_, *lists_[kActual], CurrentValue(kActual));
  LoadEditor(value_, *lists_[changesList_], CurrentValue(changesList_));
  ShowHints();
  const auto name = lists_[ShownList()]->CurrentName();
  comments_->setAccessibleName(name ? ToQString(*name) : QString());
  comments_->setPlainText(name ? ToQString(Comment(*name)) : QString());
}

void frmUpdaterX::ShowHints() {
  const std::array<int, 2> selected{changesList_, kActual};
  for (size_t page = 0; page < hints_.size(); ++page) {
    const auto name = lists_[selected[page]]->CurrentName();
    const Language& language = context_.language;
    hints_[page]->clear();
    if (!name) continue;
    const String& state = language.Text(comparison_.IsMandatory(*name) ? LNG47 : LNG48);
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
  const bool changes = comparison_.HasListChanges();
  tabLists_->setTabEnabled(kChangesPage, changes);
  if (!changes) tabLists_->setCurrentIndex(kCurrentPage);
}

void frmUpdaterX::SetChanged(int changed) {
  changed_ = changed;
  setWindowModified(changed_ > kSaved);
}

void frmUpdaterX::UndoTick(QListWidgetItem* item) {
  lists_[kNew]->SetTicked(item, comparison_.IsMandatory(FromQString(item->text())));
  const Language& language = context_.language;
  checkHint_->setText(
      ToQString(u"Checked: " + language.Text(LNG47) + u", Unchecked: " + language.Text(LNG48)));
}

void frmUpdaterX::SelectAll(int list) {
  lists_[list]->TickAll();
  UpdateButtons();
}

void frmUpdaterX::Move(int index) {
  const bool hadFocus = moves_[index]->hasFocus();
  int moved = 0;
  if (index == kNew) {
    if (const auto name = lists_[kNew]->CurrentName()) moved = comparison_.Add({*name});
  } else if (index == kActual) {
    moved =
        comparison_.Remove(lists_[kActual]->TickedNames(), context_.messages, context_.language);
  } else {
    moved = comparison_.Restore(lists_[kDeleted]->TickedNames());
  }
  if (moved == 0) return;
  SetChanged(kMoved);
  FillLists();
  UpdateChangesPage();
  // A button that has nothing left to do passes the focus on; it belongs beside that button.
  if (hadFocus && !moves_[index]->hasFocus()) lists_[ShownList()]->setFocus();
}

void frmUpdaterX::Apply() {
  if (ApplyChanges(context_, comparison_.ActualFields(), series_->Groups())) SetChanged(kSaved);
}

int frmUpdaterX::ShownList() const {
  return tabLists_->currentIndex() == kCurrentPage ? kActual : changesList_;
}

const Document& frmUpdaterX::Tree(int list) const {
  if (list == kActual) return comparison_.ActualFields();
  return list == kNew ? comparison_.NewFields() : comparison_.DeletedFields();
}

String frmUpdaterX::CurrentValue(int list) const {
  const auto name = lists_[list]->CurrentName();
  return name ? Tree(list).Fields().Field(*name)->Value() : String();
}

/// @return what the distribution says about the setting, else what the server's file says.
String frmUpdaterX::Comment(StringView name) const {
  String comment;
  for (const auto& tree : {context_.documents.distribution, context_.documents.server}) {
    comment = tree->Fields().Field(name)->Parameters().Parameter(u"Comments")->Value();
    if (!comment.empty()) break;
  }
  return NotAvailable(comment);
}

Button frmUpdaterX::Ask(MessageKey key, int style) {
  return ShowMessage(context_.messages, String(context_.language.Text(key)), style);
}

}  // namespace quenmar
