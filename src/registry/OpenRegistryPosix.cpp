#include <cstdlib>

#include "registry/FileRegistry.h"
#include "registry/OpenRegistry.h"

namespace quenmar {

namespace {

/// @return the path in an environment variable; empty when it is unset.
Path Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? Path() : Path(value);
}

/// @return the user's own registry file; empty when there is no home folder to keep it in.
Path UserFile() {
  const Path file = Path("quenmar") / "registry.reg";
  if (const Path folder = Variable("XDG_CONFIG_HOME"); folder.is_absolute()) return folder / file;
  const Path home = Variable("HOME");
  return home.empty() ? Path() : home / ".config" / file;
}

}  // namespace

std::unique_ptr<Registry> OpenRegistry(const std::optional<Path>& file) {
  if (file) return std::make_unique<FileRegistry>(*file);
  const Path named = Variable("QUENMAR_REGISTRY");
  return std::make_unique<FileRegistry>(named.empty() ? UserFile() : named);
}

}  // namespace quenmar
