/// What the Windows files of this layer have in common.
#pragma once

#include <filesystem>

#include "text/String.h"

namespace quenmar {

/// @return the path, in the form that may be longer than 260 characters where it needs to be.
[[nodiscard]] std::filesystem::path SystemPath(const std::filesystem::path& path);

/// @return the system's sentence for an error number of `GetLastError`, in its own language.
[[nodiscard]] String SystemMessage(unsigned long number);

}  // namespace quenmar
