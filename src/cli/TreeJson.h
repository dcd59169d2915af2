#pragma once

#include <initializer_list>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <utility>

#include "docmodel/Document.h"

namespace quenmar {

/// JSON whose keys stay in the order in which they are set.
using Json = nlohmann::ordered_json;

/// A tree and the key under which it is printed.
using NamedTree = std::pair<const char*, const Document*>;

/// Prints one object with an array for each tree, and in it on a line of its own for each field
/// `{"name","value","parameters":[{"name","value"}...]}`. Fields are printed one by one, so that
/// large trees need neither JSON values nor their whole text beside them.
void PrintTreesJson(std::ostream& out, std::initializer_list<NamedTree> trees);

}  // namespace quenmar
