/// What is at a path. Each system has its own implementation.
#pragma once

#include <cstdint>
#include <vector>

#include "files/Files.h"

namespace quenmar {

enum class FileKind {
  kMissing,
  kFile,  ///< a regular file
  kFolder,
  kOther,  ///< a device or the like, or unknown
};

/// @return what is at the path, links followed (on Windows a broken link is a file).
[[nodiscard]] FileKind KindOf(const Path& path);

struct FolderEntry {
  Path name;
  FileKind kind;
};

/// @return the entries of a folder whose names end in `ending`, without regard to case, in the
/// order in which the file system enumerates them; none when the folder cannot be read.
/// @param reason receives the system's message when not everything could be read; else it is empty
[[nodiscard]] std::vector<FolderEntry> EntriesEndingIn(StringView ending, const Path& folder,
                                                       String& reason);

/// @return the system's message when the entries of a folder cannot be read; otherwise empty.
[[nodiscard]] String FolderErrorText(const Path& folder);

/// @return whether both paths lead to one file or folder; false when that cannot be found out.
[[nodiscard]] bool IsSame(const Path& one, const Path& other);

/// @return whether the file has names that its replacement would not have: several hard links, or
/// on Windows a symbolic link at the path.
[[nodiscard]] bool HasOtherNames(const Path& path);

/// Time and size of a file: different ones mean another content.
struct FileStamp {
  std::int64_t time = 0;  ///< of the last change, in the system's own unit
  std::uint64_t size = 0;

  bool operator==(const FileStamp&) const = default;
};

/// @return the stamp of the file behind links; zeros where there is none or it is unknown.
[[nodiscard]] FileStamp StampOf(const Path& path);

}  // namespace quenmar
