#include "widgets/FileWindow.h"

#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <utility>

#include "conf/ConfWriter.h"
#include "conf/FolderCheck.h"
#include "conf/Functions.h"
#include "conf/SaveChanges.h"
#include "widgets/QtText.h"

namespace quenmar {

using namespace message_style;

FileWindow::FileWindow(FileContext context, QWidget* parent)
    : QDialog(parent), context_(std::move(context)) {
  setModal(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
}

void FileWindow::reject() {
  if (changed_ > 0 && Ask(LNG21, kYesNo | kQuestion | kDefaultButton2) != Button::kYes) return;
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

void FileWindow::SetChanged(std::int16_t changed) {
  changed_ = changed;
  setWindowModified(changed_ > 0);
}

void FileWindow::SetTitle(const String& title) {
  // The place of the mark; doubled it stands for itself.
  setWindowTitle(ToQString(title).replace("[*]", "[*][*]") + "[*]");
}

void FileWindow::Save(const Document& settings, const SeriesView& series) {
  const ConfWriter writer(context_.options, context_.language, context_.messages);
  const Path path = PathFromText(JoinPath(context_.serverFolder, context_.fileName));
  String details;
  // A file that cannot be read has no details; what is wrong with it saving tells.
  if (String text; ReadTextFile(path, text)) {
    details = DiffText(
        ListSaveChanges(text, writer.ConfFileLines(settings, series), context_.options.series));
  }
  if (Ask(LNG20, kYesNo | kQuestion, details) != Button::kYes) return;
  if (writer.SaveConfFile(path, settings, series)) SetChanged(0);
}

Button FileWindow::Ask(MessageKey key, int style, const String& details) {
  return ShowMessage(context_.messages, String(context_.language.Text(key)), style, {}, details);
}

void FileWindow::ShowComment(QPlainTextEdit* box, StringView name, String comment) {
  box->setAccessibleName(ToQString(name));
  // The same text again would lose what is selected in it.
  const QString shown = ToQString(NotAvailable(comment));
  if (box->toPlainText() != shown) box->setPlainText(shown);
}

QString FileWindow::Caption(MessageKey key) const { return ToCaption(context_.language.Text(key)); }

QString FileWindow::Text(MessageKey key) const { return ToQString(context_.language.Text(key)); }

}  // namespace quenmar
