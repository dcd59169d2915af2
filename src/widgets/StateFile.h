#pragma once

#include <QSettings>

namespace quenmar {

/// @return the user's own file of the toolkit for how windows look, apart from the options.
[[nodiscard]] inline QSettings StateFile() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "quenmar", "windows");
}

}  // namespace quenmar
