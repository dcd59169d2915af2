#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "text/String.h"

namespace quenmar {

/// The content of a registry file, the text form in which a registry is exported and imported.
///
/// Two forms are read and written back: 8-bit text in Windows-1252 (first line "REGEDIT4") and
/// little-endian UTF-16 with a byte order mark (first line "Windows Registry Editor Version 5.00").
/// The text is kept as it came; a change touches the lines of one value and nothing else.
class RegistryFile {
 public:
  /// A new file: the 8-bit form without any key.
  RegistryFile();

  /// @return the file with that content, a new one when there are no bytes; nothing when the bytes
  /// are not a registry file.
  [[nodiscard]] static std::optional<RegistryFile> Parse(std::string_view bytes);

  /// @return the content for the disk.
  [[nodiscard]] std::string Bytes() const;

  /// Of several lines for one name the last one counts, as it would after an import.
  /// @param key the whole path, root included; as `name` found without regard to case
  /// @param name the value's name; empty for the key's default value
  /// @return the string value; nothing when it is missing, deleted, malformed or of another type.
  [[nodiscard]] std::optional<String> Find(StringView key, StringView name) const;

  /// Replaces the value that counts; else appends the new one to its key, else to a new key at the
  /// end of the file. A file in the 8-bit form turns into the UTF-16 form when Windows-1252 lacks a
  /// character.
  /// @return false, with nothing changed, when an argument contains a CR, LF or NUL, which such a
  /// file cannot express.
  [[nodiscard]] bool Set(StringView key, StringView name, StringView value);

 private:
  enum class Encoding { kWindows1252, kUtf16 };

  /// A value's lines, as offsets into the text, and what follows its equals sign.
  struct Place {
    size_t start;
    size_t end;
    StringView data;
  };
  struct Located {
    std::optional<Place> value;
    std::optional<size_t> endOfKey;  ///< where a further value of the key belongs
  };

  [[nodiscard]] Located Locate(StringView key, StringView name) const;
  void InsertLine(size_t position, const String& line);

  Encoding encoding_ = Encoding::kWindows1252;
  String text_;  ///< without the byte order mark
};

}  // namespace quenmar
