/// What is stored between two runs: string values under keys, as in the Windows registry. Keys and
/// names are found without regard to letter case.
#pragma once

#include "text/String.h"

namespace quenmar {

enum class RegistryRoot { kLocalMachine, kCurrentUser };

class Registry {
 public:
  Registry() = default;
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;
  virtual ~Registry() = default;

  /// @param subkey the key's path below `root`, its steps separated by backslashes
  /// @param name the value's name; the empty name is the key's default value
  /// @return the string value, which may be empty; `defaultText` when the key or the value is
  /// missing, is no string, or cannot be read.
  [[nodiscard]] virtual String RegReadString(RegistryRoot root, StringView subkey, StringView name,
                                             StringView defaultText = {}) const = 0;

  /// Sets the string value, creating the key and its parents when they are missing and replacing a
  /// value of another type.
  /// @return whether the value was stored. Callers may ignore it: without the right to write the
  /// program works all the same.
  virtual bool RegWriteString(RegistryRoot root, StringView subkey, StringView name,
                              StringView value) = 0;

  /// @return one line for the user when the store as a whole could not be read, so that every read
  /// gives its default; empty otherwise.
  [[nodiscard]] virtual String ErrorText() const { return {}; }
};

}  // namespace quenmar
