#pragma once

#include <map>

#include "docmodel/Document.h"
#include "text/String.h"

namespace quenmar {

/// Finds settings that a release has perhaps renamed: a new and an obsolete one whose names are
/// equal but for case, or whose names are one or two letters apart while their values are equal.
/// Closer names go first, then the order of the trees decides; every name is in one pair at most.
/// @param newFields what only the distribution has
/// @param deletedFields what only the server has
/// @return the obsolete name of each new one that has such a pair.
[[nodiscard]] std::map<String, String> FindRenames(const Document& newFields,
                                                   const Document& deletedFields);

}  // namespace quenmar
