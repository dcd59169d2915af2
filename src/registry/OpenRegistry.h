#pragma once

#include <memory>
#include <optional>

#include "files/Files.h"
#include "registry/Registry.h"

namespace quenmar {

/// Opens the registry that this run uses: the registry file `file` when one is given, else the one
/// that the environment variable QUENMAR_REGISTRY names, else the system's own place. That is the
/// registry on Windows; elsewhere it is `quenmar/registry.reg` in the folder XDG_CONFIG_HOME (if
/// absolute), else in `.config` of the home folder.
/// @return never null; `Registry::ErrorText` says what is wrong with a file.
[[nodiscard]] std::unique_ptr<Registry> OpenRegistry(const std::optional<Path>& file);

}  // namespace quenmar
