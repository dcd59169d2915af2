/// The bytes of a configuration file as text, and back.
///
/// A file that begins with the UTF-8 byte order mark is UTF-8, and so is one that has bytes above
/// 127 and is well-formed UTF-8 throughout. Every other file is Windows-1252. Every byte survives
/// reading and writing in both.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/String.h"

namespace quenmar {

enum class ConfCharset { kWindows1252, kUtf8 };

/// @return the name of the character set, for messages.
[[nodiscard]] StringView CharsetName(ConfCharset charset);

/// The text of one file.
struct ConfText {
  String text;  ///< without the byte order mark
  ConfCharset charset = ConfCharset::kWindows1252;
  bool mark = false;   ///< the file begins with the UTF-8 byte order mark
  bool ascii = false;  ///< neither a mark nor a byte above 127: the file fits every character set
};

/// @return the text; nothing for UTF-16, told by its byte order mark, which is no configuration
/// text.
[[nodiscard]] std::optional<ConfText> DecodeConfText(std::string_view bytes);

/// @return the bytes, without a mark; nothing when the character set lacks a character.
[[nodiscard]] std::optional<std::string> EncodeConfText(StringView text, ConfCharset charset);

}  // namespace quenmar
