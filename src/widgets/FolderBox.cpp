#include "widgets/FolderBox.h"

#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QFocusEvent>
#include <QMimeData>

namespace quenmar {

namespace {

/// @return the one folder that is dragged, as the platform writes it; empty for anything else.
QString DraggedFolder(const QMimeData* data) {
  const QList<QUrl> urls = data->urls();
  if (urls.size() != 1 || !QFileInfo(urls.first().toLocalFile()).isDir()) return {};
  return QDir::toNativeSeparators(urls.first().toLocalFile());
}

}  // namespace

FolderBox::FolderBox(QWidget* parent) : QLineEdit(parent) {
  auto* const folders = new QFileSystemModel(this);
  folders->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  folders->setRootPath({});
  auto* const completer = new QCompleter(folders, this);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  setCompleter(completer);
  connect(this, &QLineEdit::returnPressed, this, &FolderBox::Complete);
  connect(this, &FolderBox::Left, this, &FolderBox::Leave, Qt::QueuedConnection);
}

void FolderBox::SetFolder(const QString& folder) {
  setText(folder);
  complete_ = text();
  emit FolderChanged();
}

void FolderBox::Complete() {
  if (text() == complete_) return;
  complete_ = text();
  emit FolderChanged();
}

/// The list of completions takes the focus while the user types, and so does the window of another
/// program that a path is copied or dragged from: the box is not left yet.
void FolderBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason) return;
  if (QGuiApplication::mouseButtons() == Qt::NoButton) {
    emit Left();
  } else {
    qApp->installEventFilter(this);
  }
}

/// A message while the mouse button is down would swallow the click that leaves the box.
bool FolderBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    qApp->removeEventFilter(this);
    emit Left();
  }
  return QLineEdit::eventFilter(watched, event);
}

/// The click may have closed the window, or opened one, in which case the text waits.
void FolderBox::Leave() {
  if (isVisible() && !hasFocus() && QApplication::activeModalWidget() == nullptr) Complete();
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
