#pragma once

#include <optional>

#include "files/Files.h"
#include "registry/Registry.h"
#include "registry/RegistryFile.h"

namespace quenmar {

/// A registry kept in one registry file, for systems without a registry and for portable use.
class FileRegistry final : public Registry {
 public:
  /// Reads the file. A missing or an empty one is a registry without values. One that cannot be
  /// read or is not a registry file gives an `ErrorText`, and is never overwritten.
  /// @param path the file; an empty path is a registry that keeps nothing
  explicit FileRegistry(Path path);

  [[nodiscard]] String RegReadString(RegistryRoot root, StringView subkey, StringView name,
                                     StringView defaultText = {}) const override;

  /// Reads the file again, so that other programs' changes stay, and replaces it;
  /// missing folders are created. Returns false also for text with a CR, LF or NUL.
  bool RegWriteString(RegistryRoot root, StringView subkey, StringView name,
                      StringView value) override;

  [[nodiscard]] String ErrorText() const override { return errorText_; }

 private:
  void Load();

  Path path_;
  std::optional<RegistryFile> file_;  ///< none while the file cannot be used
  String errorText_;
};

}  // namespace quenmar
