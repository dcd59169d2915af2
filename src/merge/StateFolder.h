#pragma once

#include "files/Files.h"

namespace quenmar {

/// @return the folder of the distributions' files that were seen: the one that the environment
/// variable QUENMAR_STATE names, else the system's place for a program's state. That
/// is `quenmar\seen` in %LOCALAPPDATA% on Windows; elsewhere `quenmar/seen` in XDG_STATE_HOME, else
/// in `.local/state` of the home folder. Empty where there is none: a relative path counts as none,
/// as it would depend on the folder in which the program was started.
[[nodiscard]] Path StateFolder();

}  // namespace quenmar
