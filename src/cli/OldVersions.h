/// The old distribution's files as the commands take them: from the folder that `--base` names,
/// else from those that were kept.
#pragma once

#include <iosfwd>
#include <optional>
#include <vector>

#include "files/Files.h"

namespace quenmar {

/// The hint that is printed when the old version of a file is not known.
inline constexpr const char* kOldUnknown =
    "what the release itself has changed is known after the next save, or with --base DIR";

/// @return the path of `file` in the folder of the old distribution's files, where one was named.
[[nodiscard]] std::optional<Path> OldFileIn(const std::optional<Path>& base, const Path& file);

/// Throws `CommandError` when the folder has none of the files, which are to be merged.
void RequireOneOf(const std::vector<Path>& files, const Path& base);

/// Prints one line about the files of the server whose old version is not known, if there are any.
/// @param base the folder that was looked in, if one was named
void ReportUnknown(const std::vector<Path>& files, const std::optional<Path>& base,
                   std::ostream& err);

}  // namespace quenmar
