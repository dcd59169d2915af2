/// The bytes of a configuration file as text, and back.
///
/// A file that begins with the UTF-8 byte order mark is UTF-8, and so is one that has bytes above
/// 127 and is well-formed UTF-8 throughout. Every other file is Windows-1252. Every byte survives
/// reading and writing in both.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "registry/Language.h"
#include "text/String.h"

namespace quenmar {

enum class ConfCharset { kWindows1252, kUtf8 };

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// @return the name of the character set, for messages.
[[nodiscard]] StringView CharsetName(ConfCharset charset);

/// What the bytes of one file are.
struct ConfEncoding {
  ConfCharset charset = ConfCharset::kWindows1252;
  bool mark = false;   ///< the file begins with the UTF-8 byte order mark
  bool ascii = true;   ///< neither a mark nor a byte above 127: the file fits every character set
  bool utf16 = false;  ///< the file begins with a byte order mark of UTF-16: no configuration text
};

[[nodiscard]] ConfEncoding EncodingOf(std::string_view bytes);

/// @param bytes part of a file, cut at characters below 128
/// @return the text of the part.
[[nodiscard]] String DecodeConfText(std::string_view bytes, ConfCharset charset);

/// @return the bytes, without a mark; nothing when the character set lacks a character.
[[nodiscard]] std::optional<std::string> EncodeConfText(StringView text, ConfCharset charset);

/// @param about what the text belongs to, for the message
/// @return the bytes. Throws `RuntimeError` when the character set lacks a character.
[[nodiscard]] std::string EncodeForSaving(StringView text, StringView about, ConfCharset charset,
                                          const Language& language);

}  // namespace quenmar
