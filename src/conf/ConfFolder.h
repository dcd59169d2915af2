#pragma once

#include <vector>

#include "files/Files.h"

namespace quenmar {

/// @return the names of the configuration files (*.conf, without regard to case) in a folder, in
/// the order in which the file system enumerates them; none when the folder cannot be read.
/// @param reason receives the system's message when not everything could be read; else it is empty
[[nodiscard]] std::vector<Path> ListConfFiles(const Path& folder, String& reason);
[[nodiscard]] std::vector<Path> ListConfFiles(const Path& folder);

/// @return whether anything in a folder is named like a configuration file, be it a folder itself.
[[nodiscard]] bool HasConfEntry(const Path& folder);

}  // namespace quenmar
