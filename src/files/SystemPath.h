/// Paths as the Windows system calls need them.
#pragma once

#include <filesystem>

namespace quenmar {

/// @return the path, in the form that may be longer than 260 characters where it needs to be.
[[nodiscard]] std::filesystem::path SystemPath(const std::filesystem::path& path);

}  // namespace quenmar
