#include "widgets/FileWindow.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <utility>

#include "conf/Functions.h"
#include "widgets/DefaultRemark.h"
#include "widgets/QtText.h"
#include "widgets/SeriesTabs.h"

namespace quenmar {

using namespace message_style;

FileWindow::FileWindow(FileContext context, QWidget* parent)
    : QDialog(parent), context_(std::move(context)) {
  setModal(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  AddUndo();
}

void FileWindow::AddUndo() {
  const auto add = [this](const QString& caption, const char* name, void (FileMerge::*step)()) {
    auto* const action = new QAction(caption, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, step] { Step(step); });
    addAction(action);
    return action;
  };
  // In the toolkit's words, which it translates.
  undo_ = add(QLineEdit::tr("&Undo"), "Undo", &FileMerge::Undo);
  redo_ = add(QLineEdit::tr("&Redo"), "Redo", &FileMerge::Redo);
  undo_->setShortcuts(QKeySequence::Undo);
  QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::Redo);
  for (const char* const common : {"Ctrl+Shift+Z", "Ctrl+Y"}) {
    // A key that is there twice would be ambiguous.
    if (!keys.contains(QKeySequence(common))) keys << QKeySequence(common);
  }
  redo_->setShortcuts(keys);
  ShowChanged();
}

void FileWindow::Step(void (FileMerge::*step)()) {
  (context_.merge.*step)();
  ShowMerge();
  ShowChanged();
}

void FileWindow::Load(SeriesTabs* series) const {
  series->Load(Merge().Series());
  ShowEntries(series);
}

void FileWindow::ShowEntries(SeriesTabs* series) const {
  series->ShowChecks(Merge().Series());
  std::vector<String> withdrawn;
  for (const SeriesEntry& entry : Merge().WithdrawnEntries()) withdrawn.push_back(entry.name);
  series->Mark(withdrawn, kWithdrawnMark, Text(Message::kEntryWithdrawn));
}

std::int16_t FileWindow::Changed() const {
  const auto step = context_.merge.UnsavedStep();
  return step ? static_cast<std::int16_t>(*step) : std::int16_t{0};
}

void FileWindow::reject() {
  if (!context_.merge.IsModified() || AskToIgnore()) QDialog::reject();
}

bool FileWindow::AskToIgnore() {
  const String remark = ClosingRemark();
  return ShowMessage(context_.with.messages,
                     context_.with.language.Text(Message::kIgnoreChanges) + u"%1",
                     kYesNo | kQuestion | kDefaultButton2,
                     {remark.empty() ? remark : u"\r\n\r\n" + remark}) == Button::kYes;
}

void FileWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QDialog::keyPressEvent(event);
    return;
  }
  // Enter in an editor or a list must not press a button elsewhere in the window.
  if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) button->click();
}

void FileWindow::ShowChanged() {
  setWindowModified(context_.merge.IsModified());
  undo_->setEnabled(context_.merge.CanUndo());
  redo_->setEnabled(context_.merge.CanRedo());
}

void FileWindow::UndoInMerge(QWidget* control) {
  control->installEventFilter(this);
  auto* const line = qobject_cast<QLineEdit*>(control);
  if (line == nullptr) return;
  line->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(line, &QWidget::customContextMenuRequested, this, [this, line](QPoint place) {
    const std::unique_ptr<QMenu> menu(line->createStandardContextMenu());
    if (!line->actions().isEmpty()) menu->addSeparator();
    menu->addActions(line->actions());
    ShowMenu(*menu, line->mapToGlobal(place));
  });
}

/// Leaves the keys of undo and redo to the window, also while there is nothing to undo.
bool FileWindow::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  if (pressed || event->type() == QEvent::ShortcutOverride) {
    const QKeySequence key(static_cast<QKeyEvent*>(event)->keyCombination());
    if (undo_->shortcuts().contains(key) || redo_->shortcuts().contains(key)) {
      event->setAccepted(pressed);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FileWindow::ShowMenu(QMenu& menu, QPoint place) {
  for (QAction* const standard : menu.actions()) {
    const QString caption = standard->text().section('\t', 0, 0);  // keys may follow a tab
    for (QAction* const own : actions()) {
      if (own == standard || caption != own->text()) continue;
      menu.insertAction(standard, own);
      menu.removeAction(standard);
    }
  }
  menu.setObjectName("contextMenu");
  menu.exec(place);
}

void FileWindow::SetTitle(const String& title) {
  // The place of the mark; doubled it is an ordinary text.
  setWindowTitle(ToQString(title).replace("[*]", "[*][*]") + "[*]");
}

void FileWindow::Save() {
  Button answer = Button::kOffer;
  while (answer == Button::kOffer) {  // which makes another plan
    try {
      const SavePlan plan = context_.merge.Plan();
      answer = AskToApply(WarningText(plan.warnings, context_.with.language), plan.diff);
      if (answer == Button::kYes && context_.merge.Save(plan)) ShowChanged();
    } catch (const RuntimeError& error) {
      answer = AskToApply({}, {});
      if (answer == Button::kYes) context_.merge.TellFailure(error);
    }
    if (answer == Button::kOffer) TakeOffer();
  }
}

Button FileWindow::AskToApply(const String& warnings, const String& details) {
  return ShowMessage(
      context_.with.messages, context_.with.language.Text(Message::kApplyChanges) + u"%1",
      kYesNo | kQuestion, {warnings.empty() ? warnings : u"\r\n\r\n" + warnings}, details, Offer());
}

Button FileWindow::Ask(Message key, int style, std::initializer_list<StringView> placeholders) {
  return ShowMessage(context_.with.messages, context_.with.language.Text(key), style, placeholders);
}

const String& FileWindow::NeedOf(StringView name) const {
  return TheLanguage().Text(Merge().IsMandatory(name) ? Message::kMandatory : Message::kOptional);
}

void FileWindow::SwitchSettings(const std::vector<String>& names, StringView current,
                                const std::function<void()>& show) {
  const bool active = Merge().IsWantedActive(current);
  const std::vector<String> refused = Merge().SwitchSettings(names, !active);
  show();
  ShowChanged();
  if (!refused.empty()) Ask(Message::kCannotSwitchOff, kInformation, {refused.front()});
}

QPlainTextEdit* FileWindow::MakeComments(QWidget* parent) {
  auto* const box = new QPlainTextEdit(parent);
  box->setReadOnly(true);
  box->setTabChangesFocus(true);
  box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  UndoInMerge(box);
  return box;
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
