/// What stands where: questions about paths that the systems answer each in their own way.
#pragma once

#include <cstdint>
#include <vector>

#include "files/Files.h"

namespace quenmar {

enum class FileKind {
  kMissing,
  kFile,  ///< a regular file
  kFolder,
  kOther,  ///< a device or the like, or what cannot be told
};

/// @return what stands at the path, or where a link there leads (on Windows a link that leads
/// nowhere counts as a file).
[[nodiscard]] FileKind KindOf(const Path& path);

struct FolderEntry {
  Path name;
  FileKind kind;
};

/// @return the entries of a folder whose names end in `ending`, without regard to case, in the
/// order in which the file system enumerates them; none when the folder cannot be read.
/// @param trouble receives the system's words for why not everything could be read, else it is
/// empty
[[nodiscard]] std::vector<FolderEntry> EntriesEndingIn(StringView ending, const Path& folder,
                                                       String& trouble);

/// @return whether both paths lead to one file or folder; what cannot be looked at is not the same.
[[nodiscard]] bool IsSame(const Path& one, const Path& other);

/// @return whether the file has names that a new file in the place of this one would not have:
/// several hard links, or on Windows a symbolic link that stands at the path.
[[nodiscard]] bool HasOtherNames(const Path& path);

/// What tells one content of a file from another without reading it.
struct FileStamp {
  std::int64_t time = 0;  ///< of the last change, in the system's own count
  std::uint64_t size = 0;

  bool operator==(const FileStamp&) const = default;
};

/// @return the stamp of the file behind links; zeros where there is none or it cannot be told.
[[nodiscard]] FileStamp StampOf(const Path& path);

}  // namespace quenmar
