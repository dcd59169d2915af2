#pragma once

#include <vector>

#include "files/Files.h"

namespace quenmar {

/// @return the names of the configuration files (*.conf, without regard to case) in a folder, in
/// the order in which the file system enumerates them; none when the folder cannot be read.
[[nodiscard]] std::vector<Path> ListConfFiles(const Path& folder);

}  // namespace quenmar
