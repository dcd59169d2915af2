/// Letter case, for the letters that Windows-1252 has in both cases.
///
/// Characters whose other case is not in the code page (sharp s, the micro sign, the florin sign)
/// fold to themselves, so lower-casing and upper-casing give the same comparisons.
#pragma once

#include "text/String.h"

namespace quenmar {

/// @return the small form of `character`; any character without one is returned as it is.
[[nodiscard]] char16_t ToLower(char16_t character);

/// @return `text` with every letter in its small form.
[[nodiscard]] String ToLower(StringView text);

/// Compares without allocating: lengths first, then folded characters.
[[nodiscard]] bool EqualIgnoringCase(StringView left, StringView right);

}  // namespace quenmar
