#include <windows.h>
// after windows.h, which it builds on
#include <shlobj.h>

#include <QDir>
#include <QWidget>
#include <array>
#include <string>

#include "app/FolderPicker.h"

namespace quenmar {

namespace {

/// @param folder of the current folder: begins with it once the dialog exists
int CALLBACK SelectFolder(HWND dialog, UINT message, LPARAM /*detail*/, LPARAM folder) {
  if (message == BFFM_INITIALIZED) ::SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, folder);
  return 0;
}

QString Pick(QWidget* owner, const QString& title, const QString& folder) {
  const std::wstring shown = (title.isEmpty() ? QString(kPickerTitle) : title).toStdWString();
  // The shell takes no forward slashes.
  const std::wstring current = QDir::toNativeSeparators(folder).toStdWString();
  BROWSEINFOW info{};
  info.hwndOwner = reinterpret_cast<HWND>(owner->winId());
  info.lpszTitle = shown.c_str();
  info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
  info.lpfn = SelectFolder;
  info.lParam = reinterpret_cast<LPARAM>(current.c_str());
  auto* const chosen = ::SHBrowseForFolderW(&info);
  if (chosen == nullptr) return {};
  std::array<wchar_t, MAX_PATH> path{};  // stays empty when the path is longer than that
  ::SHGetPathFromIDListW(chosen, path.data());
  ::CoTaskMemFree(chosen);
  return QString::fromWCharArray(path.data(),
                                 static_cast<int>(::wcsnlen(path.data(), path.size())));
}

}  // namespace

FolderPicker PlatformFolderPicker() { return Pick; }

}  // namespace quenmar
