#pragma once

#include <initializer_list>
#include <iosfwd>
#include <utility>

#include "docmodel/Document.h"

namespace quenmar {

/// A tree and the key under which it is printed, which needs no escapes.
using NamedTree = std::pair<const char*, const Document*>;

/// Prints one object with an array for each tree, and in it on a line of its own for each field
/// `{"name","value","parameters":[{"name","value"}...]}`, as UTF-8; half a surrogate pair becomes
/// U+FFFD. The text is written piece by piece, so that large trees do not need it in memory.
void PrintTreesJson(std::ostream& out, std::initializer_list<NamedTree> trees);

}  // namespace quenmar
