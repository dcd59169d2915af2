#pragma once

#include <QSettings>

#include "ScratchFolder.h"
#include "Trees.h"
#include "widgets/QtText.h"

namespace quenmar {

/// Lets the windows of one test program remember their geometry in a folder of its own.
class PrivateState {
 public:
  PrivateState() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       ToQString(PathText(folder_.Folder())));
  }

 private:
  ScratchFolder folder_;
};

}  // namespace quenmar
