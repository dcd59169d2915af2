#include <QDir>
#include <QFileDialog>

#include "app/FolderPicker.h"

namespace quenmar {

FolderPicker PlatformFolderPicker() {
  return [](QWidget* owner, const QString& title, const QString& folder) {
    const QString shown = title.isEmpty() ? kPickerTitle : title;
    return QDir::toNativeSeparators(QFileDialog::getExistingDirectory(owner, shown, folder));
  };
}

}  // namespace quenmar
