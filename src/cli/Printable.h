#pragma once

#include <string>

#include "text/String.h"

namespace quenmar {

/// @return the text as UTF-8 on one line and without control characters: a tab becomes a backslash
/// and "t", any other control character "?".
[[nodiscard]] std::string Printable(StringView text);

/// The same, but CR LF and LF stay line breaks.
[[nodiscard]] std::string PrintableLines(StringView text);

}  // namespace quenmar
