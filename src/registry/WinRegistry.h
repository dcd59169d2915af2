#pragma once

#include "registry/Registry.h"

namespace quenmar {

/// The registry of Windows, through its 8-bit functions: text is in the system's code page.
class WinRegistry final : public Registry {
 public:
  /// The text of a value ends at its first NUL.
  [[nodiscard]] String RegReadString(RegistryRoot root, StringView subkey, StringView name,
                                     StringView defaultText = {}) const override;

  /// Writes nothing and returns false also when the system's code page lacks a character.
  bool RegWriteString(RegistryRoot root, StringView subkey, StringView name,
                      StringView value) override;
};

}  // namespace quenmar
