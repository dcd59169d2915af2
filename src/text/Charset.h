/// The one place where bytes become text and text becomes bytes.
///
/// The five bytes that Windows-1252 leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the code
/// points of the same number, so every byte survives reading and writing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/String.h"

namespace quenmar {

/// @return one character for each byte of `bytes`.
[[nodiscard]] String FromWindows1252(std::string_view bytes);

/// The same into an array of as many characters.
void FromWindows1252(std::string_view bytes, char16_t* text);

/// @return one byte for each character, or nothing when the code page lacks one of them.
[[nodiscard]] std::optional<std::string> ToWindows1252(StringView text);

/// @return whether the code page has every character of `text`.
[[nodiscard]] bool FitsWindows1252(StringView text);

/// @return the text; each byte that is not part of well-formed UTF-8 becomes U+FFFD.
[[nodiscard]] String FromUtf8(std::string_view bytes);

/// @return the bytes; a surrogate that is not part of a pair becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(StringView text);

/// @return where the first byte is that is not part of well-formed UTF-8, `npos` for none.
[[nodiscard]] size_t FindNonUtf8(std::string_view bytes);

/// @return whether `bytes` is well-formed UTF-8 throughout.
[[nodiscard]] bool IsUtf8(std::string_view bytes);

/// Like `FromUtf8`, but each byte that is not part of well-formed UTF-8 becomes the unpaired
/// surrogate U+DC00 plus the byte (U+DC80 to U+DCFF), so that every byte survives.
[[nodiscard]] String FromUtf8KeepingBytes(std::string_view bytes);

/// @return whether `FromUtf8KeepingBytes` returns this character for a byte that is not UTF-8.
[[nodiscard]] bool IsEscapedByte(char16_t character);

/// @return the bytes that `FromUtf8KeepingBytes` reads as `text`; nothing when `text` has any other
/// unpaired surrogate.
[[nodiscard]] std::optional<std::string> ToUtf8KeepingBytes(StringView text);

/// @return the characters of little-endian UTF-16 bytes; an odd byte at the end is dropped.
[[nodiscard]] String FromUtf16Le(std::string_view bytes);

/// @return two bytes for each character, the lower one first.
[[nodiscard]] std::string ToUtf16Le(StringView text);

}  // namespace quenmar
