#pragma once

#include <system_error>
#include <vector>

#include "files/Files.h"

namespace quenmar {

/// @return the names of the configuration files (*.conf, without regard to case) in a folder, in
/// the order in which the file system enumerates them; none when the folder cannot be read.
/// @param error receives why the folder could not be read
[[nodiscard]] std::vector<Path> ListConfFiles(const Path& folder, std::error_code& error);
[[nodiscard]] std::vector<Path> ListConfFiles(const Path& folder);

/// @return whether anything in a folder is named like a configuration file, be it a folder itself.
[[nodiscard]] bool HasConfEntry(const Path& folder);

}  // namespace quenmar
