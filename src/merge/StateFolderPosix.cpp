#include <cstdlib>

#include "merge/StateFolder.h"

namespace quenmar {

namespace {

/// @return the path in an environment variable; empty when it is unset or relative.
Path Variable(const char* name) {
  const char* const value = std::getenv(name);
  const Path path = value == nullptr ? "" : value;
  return path.is_absolute() ? path : Path();
}

}  // namespace

Path StateFolder() {
  // When it is set but wrong, the user's own folder is not used instead.
  if (std::getenv("QUENMAR_STATE") != nullptr) return Variable("QUENMAR_STATE");
  const Path seen = Path("quenmar") / "seen";
  if (const Path folder = Variable("XDG_STATE_HOME"); !folder.empty()) return folder / seen;
  const Path home = Variable("HOME");
  return home.empty() ? Path() : home / ".local" / "state" / seen;
}

}  // namespace quenmar
