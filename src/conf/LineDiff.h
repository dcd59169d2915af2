#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conf/ConfFile.h"
#include "text/String.h"

namespace quenmar {

/// A run of lines that differs between two files. Line numbers count from 0.
struct LineEdit {
  size_t oldLine = 0;  ///< where the removed lines begin, or before which line the added ones come
  size_t newLine = 0;  ///< where the added lines begin
  std::vector<std::string_view> removed;  ///< parts of the old file, without their ends
  std::vector<std::string_view> added;    ///< parts of the new file
};

/// Finds the lines that differ. Lines that are in both files once each, in the same order, are the
/// same; so are equal lines beside them. Costs no more than sorting the lines.
/// @param before, after outlive the result; a lone LF is a line end, and ends do not count
[[nodiscard]] std::vector<LineEdit> DiffLines(const ConfFile& before, const ConfFile& after);

/// @return the edits as a unified diff with three lines of context, without the names of the files:
/// "@@ -1,4 +1,4 @@" before each part, then lines behind " ", "-" and "+". Lines end in CR LF.
[[nodiscard]] String UnifiedDiff(const ConfFile& before, const ConfFile& after);

}  // namespace quenmar
