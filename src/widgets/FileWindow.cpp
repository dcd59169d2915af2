#include "widgets/FileWindow.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <utility>

#include "conf/Functions.h"
#include "widgets/QtText.h"

namespace quenmar {

using namespace message_style;

FileWindow::FileWindow(FileContext context, QWidget* parent)
    : QDialog(parent), context_(std::move(context)) {
  setModal(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  AddUndo();
}

void FileWindow::AddUndo() {
  // In the toolkit's words, which it translates.
  undo_ = new QAction(QLineEdit::tr("&Undo"), this);
  redo_ = new QAction(QLineEdit::tr("&Redo"), this);
  undo_->setObjectName("Undo");
  redo_->setObjectName("Redo");
  undo_->setShortcut(QKeySequence::Undo);
  redo_->setShortcuts({QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")});
  connect(undo_, &QAction::triggered, this, [this] { Step(&FileMerge::Undo); });
  connect(redo_, &QAction::triggered, this, [this] { Step(&FileMerge::Redo); });
  addActions({undo_, redo_});
  ShowChanged();
}

void FileWindow::Step(void (FileMerge::*step)()) {
  (context_.merge.*step)();
  ShowMerge();
  ShowChanged();
}

std::int16_t FileWindow::Changed() const {
  const auto step = context_.merge.UnsavedStep();
  return step ? static_cast<std::int16_t>(*step) : 0;
}

void FileWindow::reject() {
  if (context_.merge.IsModified() &&
      Ask(Message::kIgnoreChanges, kYesNo | kQuestion | kDefaultButton2) != Button::kYes) {
    return;
  }
  QDialog::reject();
}

void FileWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QDialog::keyPressEvent(event);
    return;
  }
  // Enter in an editor or a list must not press a button that nobody looks at.
  if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) button->click();
}

void FileWindow::ShowChanged() {
  setWindowModified(context_.merge.IsModified());
  undo_->setEnabled(context_.merge.CanUndo());
  redo_->setEnabled(context_.merge.CanRedo());
}

void FileWindow::UndoInMerge(QWidget* control) { control->installEventFilter(this); }

/// Leaves the shortcuts of undo and redo to the window's actions, which text controls would take.
bool FileWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
      event->ignore();
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FileWindow::SetTitle(const String& title) {
  // The place of the mark; doubled it stands for itself.
  setWindowTitle(ToQString(title).replace("[*]", "[*][*]") + "[*]");
}

void FileWindow::Save() {
  SavePlan plan;
  try {
    plan = context_.merge.Plan();
  } catch (const RuntimeError& error) {
    if (AskToApply({}, {})) context_.merge.TellFailure(error);
    return;
  }
  const Language& language = context_.with.language;
  if (!AskToApply(WarningText(plan.warnings, language), plan.diff)) return;
  if (context_.merge.Save(plan)) ShowChanged();
}

bool FileWindow::AskToApply(const String& warnings, const String& details) {
  return ShowMessage(context_.with.messages,
                     context_.with.language.Text(Message::kApplyChanges) + u"%1",
                     kYesNo | kQuestion, {warnings.empty() ? warnings : u"\r\n\r\n" + warnings},
                     details) == Button::kYes;
}

Button FileWindow::Ask(Message key, int style) {
  return ShowMessage(context_.with.messages, context_.with.language.Text(key), style);
}

void FileWindow::ShowComment(QPlainTextEdit* box, StringView name, String comment) {
  box->setAccessibleName(ToQString(name));
  // The same text again would lose what is selected in it. The box ends its lines in its own way.
  const QString shown = ToQString(NotAvailable(comment)).replace("\r\n", "\n");
  const QString raw = box->document()->toRawText().replace(QChar::ParagraphSeparator, '\n');
  if (raw != shown) box->setPlainText(shown);
}

QString FileWindow::Caption(Message key) const {
  return ToCaption(context_.with.language.Text(key));
}

QString FileWindow::Text(Message key) const { return ToQString(context_.with.language.Text(key)); }

}  // namespace quenmar
