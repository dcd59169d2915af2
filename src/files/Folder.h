/// What stands where: questions about paths that the systems answer each in their own way.
#pragma once

#include <system_error>
#include <vector>

#include "files/Files.h"

namespace quenmar {

enum class FileKind {
  kMissing,
  kFile,  ///< a regular file
  kFolder,
  kOther,  ///< a device or the like, or what cannot be told
};

/// @return what stands at the path, or where a link there leads.
[[nodiscard]] FileKind KindOf(const Path& path);

struct FolderEntry {
  Path name;
  FileKind kind;
};

/// @return the entries of a folder whose names end in `ending`, without regard to case, in the
/// order in which the file system enumerates them; none when the folder cannot be read.
/// @param error receives why the folder could not be read
[[nodiscard]] std::vector<FolderEntry> EntriesEndingIn(StringView ending, const Path& folder,
                                                       std::error_code& error);

}  // namespace quenmar
