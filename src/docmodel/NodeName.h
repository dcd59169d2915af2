#pragma once

#include "text/String.h"

namespace quenmar {

/// The descriptions with which a class of the tree rejects a name.
struct NameRules {
  StringView source;
  StringView blank;    ///< description when the name contains a blank
  StringView illegal;  ///< description when the name contains "<", ">" or a double quote
};

/// Throws `DocError` 32 or 33 unless `name` may name an element. The blank is looked for first; an
/// empty name is valid; tabs, "=", "&" and other characters are not checked.
void CheckName(StringView name, const NameRules& rules);

}  // namespace quenmar
