#include "widgets/FolderBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QDropEvent>
#include <QFileSystemModel>
#include <QFocusEvent>
#include <QMimeData>

#include "files/Folder.h"
#include "text/Charset.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

bool IsFolder(const QString& text) {
  return !text.isEmpty() && KindOf(PathFromText(FromQString(text))) == FileKind::kFolder;
}

/// @return the one folder that is dragged, as the platform writes it; empty for anything else.
QString DraggedFolder(const QMimeData* data) {
  const QList<QUrl> urls = data->urls();
  if (urls.size() != 1) return {};
  QString folder = urls.first().toLocalFile();
  if (folder.contains(QChar::ReplacementCharacter)) {  // maybe for bytes that are no valid text
    const QByteArray encoded = urls.first().path(QUrl::FullyEncoded).toLatin1();
    folder =
        ToQString(FromUtf8KeepingBytes(QByteArray::fromPercentEncoding(encoded).toStdString()));
  }
  return IsFolder(folder) ? QDir::toNativeSeparators(folder) : QString();
}

/// @return `folder` without blanks around it, unless these belong to the name.
QString WithoutBlanks(const QString& folder) {
  const QString trimmed = folder.trimmed();
  return IsFolder(folder) && !IsFolder(trimmed) ? folder : trimmed;
}

}  // namespace

FolderBox::FolderBox(QWidget* parent) : QLineEdit(parent) {
  auto* const folders = new QFileSystemModel(this);
  folders->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  folders->setRootPath({});
  auto* const completer = new QCompleter(folders, this);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  setCompleter(completer);
  const auto forget = [this] { offered_.clear(); };
  connect(completer, qOverload<const QString&>(&QCompleter::highlighted), this,
          [this](const QString& folder) { offered_ = folder; });
  connect(completer, qOverload<const QString&>(&QCompleter::activated), this, forget);
  connect(this, &QLineEdit::textEdited, this, forget);
  connect(this, &QLineEdit::returnPressed, this, &FolderBox::Submit);
  connect(this, &FolderBox::Leaving, this, &FolderBox::Leave, Qt::QueuedConnection);
}

void FolderBox::SetFolder(const QString& folder) {
  const QString tidy = WithoutBlanks(folder);
  if (text() != tidy) setText(tidy);
  complete_ = tidy;
  emit FolderChanged();
}

void FolderBox::Complete() {
  if (text() != complete_) SetFolder(text());
}

void FolderBox::Submit() {
  if (!offered_.isEmpty() && text() == offered_) {
    offered_.clear();
    return;
  }
  completer()->popup()->hide();  // it would keep the keys from a message
  SetFolder(text());
}

/// The list of completions takes the focus while the user types, and so does the window of another
/// program that a path is copied or dragged from: the box is not left yet.
void FolderBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason) return;
  if (QGuiApplication::mouseButtons() == Qt::NoButton) {
    emit Leaving();
  } else {
    qApp->installEventFilter(this);
  }
}

/// A message while the mouse button is down would swallow the click that leaves the box.
bool FolderBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    qApp->removeEventFilter(this);
    emit Leaving();
  }
  return QLineEdit::eventFilter(watched, event);
}

/// The click may have closed the window, or opened one, in which case the text waits.
void FolderBox::Leave() {
  if (isVisible() && !hasFocus() && QApplication::activeModalWidget() == nullptr) emit Left();
}

void FolderBox::dragEnterEvent(QDragEnterEvent* event) {
  if (DraggedFolder(event->mimeData()).isEmpty()) {
    QLineEdit::dragEnterEvent(event);
  } else {
    event->acceptProposedAction();
  }
}

void FolderBox::dropEvent(QDropEvent* event) {
  const QString folder = DraggedFolder(event->mimeData());
  if (folder.isEmpty()) {
    QLineEdit::dropEvent(event);
    return;
  }
  event->acceptProposedAction();
  emit FolderDropped(folder);
}

}  // namespace quenmar
