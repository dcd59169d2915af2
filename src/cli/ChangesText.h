#pragma once

#include <iosfwd>
#include <string>

#include "conf/SaveChanges.h"

namespace quenmar {

/// Prints a line for each change and the number of lost comment lines, or "no changes".
void PrintChanges(const SaveChanges& changes, std::ostream& out);

/// @return the counts of the changes in one line.
[[nodiscard]] std::string SummaryOf(const SaveChanges& changes);

}  // namespace quenmar
