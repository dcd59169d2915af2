#include <cstdlib>

#include "merge/StateFolder.h"

namespace quenmar {

namespace {

/// @return the path in an environment variable; empty when it is unset or relative, if only to the
/// current drive.
Path Variable(const wchar_t* name) {
  // The 8-bit environment would lose the names that the code page lacks.
  const wchar_t* const value = ::_wgetenv(name);
  const Path path = value == nullptr ? L"" : value;
  return path.is_absolute() ? path : Path();
}

}  // namespace

Path StateFolder() {
  // When it is set but wrong, the user's own folder is not used instead.
  if (::_wgetenv(L"QUENMAR_STATE") != nullptr) return Variable(L"QUENMAR_STATE");
  const Path folder = Variable(L"LOCALAPPDATA");
  return folder.empty() ? Path() : folder / L"quenmar" / L"seen";
}

}  // namespace quenmar
