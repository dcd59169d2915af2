#include <cstdlib>

#include "registry/FileRegistry.h"
#include "registry/OpenRegistry.h"
#include "registry/WinRegistry.h"

namespace quenmar {

std::unique_ptr<Registry> OpenRegistry(const std::optional<Path>& file) {
  if (file) return std::make_unique<FileRegistry>(*file);
  // The 8-bit environment would lose the names that the code page lacks.
  const wchar_t* const named = ::_wgetenv(L"QUENMAR_REGISTRY");
  if (named != nullptr && *named != L'\0') return std::make_unique<FileRegistry>(Path(named));
  return std::make_unique<WinRegistry>();
}

}  // namespace quenmar
