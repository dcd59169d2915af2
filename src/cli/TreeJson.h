#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "docmodel/Document.h"

namespace quenmar {

/// JSON whose keys stay in the order in which they are set.
using Json = nlohmann::ordered_json;

/// A tree and the key under which it is printed.
using NamedTree = std::pair<const char*, const Document*>;

/// @return one object with an array for each tree, and in it on a line of its own for each field
/// `{"name","value","parameters":[{"name","value"}...]}`. The text is put together field by field,
/// so that large trees need no second tree of JSON values beside them.
[[nodiscard]] std::string TreesJson(std::initializer_list<NamedTree> trees);

}  // namespace quenmar
