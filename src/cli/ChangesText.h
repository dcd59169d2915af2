#pragma once

#include <iosfwd>
#include <set>
#include <string>
#include <vector>

#include "conf/SaveChanges.h"

namespace quenmar {

/// Prints a line for each change and for each effect on the whole file, or "no changes".
/// @param taken the settings that get the release's new default
void PrintChanges(const SaveChanges& changes, const std::set<String>& taken,
                  const Language& language, std::ostream& out);

/// @return a summary of the changes: their number by kind, and each effect on the whole file; empty
/// when the bytes of the file stay as they are.
[[nodiscard]] std::vector<std::string> EffectsOf(const SaveChanges& changes,
                                                 const Language& language);

/// @return the effects in one line.
[[nodiscard]] std::string SummaryOf(const SaveChanges& changes, const Language& language);

}  // namespace quenmar
