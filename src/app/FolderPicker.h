/// The way from the main window to the platform's folder picker; one source file per platform.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace quenmar {

/// Lets the user pick a folder: owner window, title and the folder to begin in; empty on Cancel.
using FolderPicker =
    std::function<QString(QWidget* owner, const QString& title, const QString& folder)>;

/// @return the platform's own folder picker.
[[nodiscard]] FolderPicker PlatformFolderPicker();

/// What a picker without a title shows.
inline constexpr const char* kPickerTitle =
    "Please select your Documents folder or one of it's subfolders";

}  // namespace quenmar
