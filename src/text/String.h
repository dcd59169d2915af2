/// The text type of the system and the small operations on it that more than one layer needs.
///
/// Text is a sequence of 16-bit characters, as in the files' home platform. "Trimmed" and "blank"
/// mean the space U+0020 only: tabs and other white space are ordinary characters here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quenmar {

using String = std::u16string;
using StringView = std::u16string_view;

/// The line end of configuration files and of every multi-line text in a tree.
inline constexpr StringView kLineEnd = u"\r\n";

/// @return `text` with every occurrence of `from` (not empty) replaced by `to`, in one pass from
/// the left: what a replacement produced is not searched again.
[[nodiscard]] String ReplaceAll(StringView text, StringView from, StringView to);

/// @return the part of `text` between its leading and its trailing blanks; a view into `text`.
/// @param blanks the characters to pass over; spaces only unless a format knows others
[[nodiscard]] StringView Trim(StringView text, StringView blanks = u" ");

/// @return whether `text` contains `part`.
[[nodiscard]] bool Contains(StringView text, StringView part);

/// @return the pieces of `text` between the separators, at least one; views into `text`.
[[nodiscard]] std::vector<StringView> Split(StringView text, char16_t separator);

/// Reads a whole number with an optional sign, surrounding spaces allowed.
/// @return the number; 0 when `text` is anything else or the number does not fit 32 bits.
[[nodiscard]] int ToInteger(StringView text);

/// @return `number` in decimal digits.
[[nodiscard]] String ToText(int number);

}  // namespace quenmar
