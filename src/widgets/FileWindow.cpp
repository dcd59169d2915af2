#include "widgets/FileWindow.h"

#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <utility>

#include "conf/ConfWriter.h"
#include "conf/Functions.h"
#include "conf/SaveChanges.h"
#include "conf/SaveWarnings.h"
#include "widgets/QtText.h"

namespace quenmar {

using namespace message_style;

FileWindow::FileWindow(FileContext context, QWidget* parent)
    : QDialog(parent), context_(std::move(context)) {
  setModal(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
}

void FileWindow::reject() {
  if (changed_ > 0 &&
      Ask(Message::kIgnoreChanges, kYesNo | kQuestion | kDefaultButton2) != Button::kYes)
    return;
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
  String warnings;
  String details;
  try {
    const std::vector<String> lines = writer.ConfFileLines(settings, series);
    const std::string bytes = writer.EncodeLines(lines, context_.server.charset);
    const std::string onDisk =
        OpenedFile::FromDisk(context_.server.path).bytes.value_or(std::string());
    const SaveChanges changes = ListSaveChanges(onDisk, lines, bytes, context_.options.series);
    warnings = WarningText(
        ListSaveWarnings(settings, *context_.documents.distribution, changes,
                         CharsetWarning(bytes, context_.server.charset, context_.language)),
        context_.language);
    details = DiffText(changes, context_.language);
  } catch (const RuntimeError&) {
    // What cannot be encoded or read has no list; saving tells it.
  }
  if (ShowMessage(context_.messages, context_.language.Text(Message::kApplyChanges) + u"%1",
                  kYesNo | kQuestion, {warnings.empty() ? warnings : u"\r\n\r\n" + warnings},
                  details) != Button::kYes) {
    return;
  }
  if (writer.SaveConfFile(context_.server, settings, series)) SetChanged(0);
}

Button FileWindow::Ask(Message key, int style) {
  return ShowMessage(context_.messages, String(context_.language.Text(key)), style);
}

void FileWindow::ShowComment(QPlainTextEdit* box, StringView name, String comment) {
  box->setAccessibleName(ToQString(name));
  // The same text again would lose what is selected in it. The box ends its lines in its own way.
  const QString shown = ToQString(NotAvailable(comment)).replace("\r\n", "\n");
  const QString raw = box->document()->toRawText().replace(QChar::ParagraphSeparator, '\n');
  if (raw != shown) box->setPlainText(shown);
}

QString FileWindow::Caption(Message key) const { return ToCaption(context_.language.Text(key)); }

QString FileWindow::Text(Message key) const { return ToQString(context_.language.Text(key)); }

}  // namespace quenmar
