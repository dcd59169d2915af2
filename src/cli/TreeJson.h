#pragma once

#include <nlohmann/json.hpp>

#include "docmodel/Document.h"

namespace quenmar {

/// JSON whose keys stay in the order in which they are set.
using Json = nlohmann::ordered_json;

/// @return `{"name","value","parameters":[{"name","value"}...]}` for each field of the tree.
[[nodiscard]] Json FieldsJson(const Document& tree);

}  // namespace quenmar
