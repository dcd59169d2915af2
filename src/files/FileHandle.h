/// An open file, as thin as the systems allow: what differs between them stands in
/// FileHandlePosix.cpp and FileHandleWindows.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "files/FileError.h"

namespace quenmar {

/// Owns one open file and closes it at the latest when destroyed. Every operation throws
/// `FileError`.
class FileHandle {
 public:
  enum class Mode {
    kRead,           ///< an existing file, shared with other programs
    kProbeForWrite,  ///< an existing file, content untouched: fails where writing would
    kTruncate,       ///< for writing; created when missing, emptied otherwise
    kCreateNew,      ///< for writing; fails when the name is taken; readable by the owner only, on
                     ///< Windows by whom its folder lets
  };

  FileHandle(const std::filesystem::path& path, Mode mode);
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle();

  /// @return how many bytes were read into `buffer`, at most `size`; 0 at the end of the file.
  [[nodiscard]] size_t Read(char* buffer, size_t size);

  void Write(std::string_view bytes);

  /// Gives the file the owner and the permissions of `model`, which exists.
  void TakePermissionsOf(const std::filesystem::path& model);

  /// Gives the file the permissions that a newly created file has by default.
  void TakeDefaultPermissions();

  /// Brings the content to the disk and closes the file; a full disk shows here at the latest.
  void FlushAndClose();

 private:
  std::intptr_t handle_;
};

/// @return whether a failure to make a file says that this user may make none of that name there:
/// no right to write to the folder or to give files away, a read-only disk, a name too long.
[[nodiscard]] bool IsRefusal(const FileError& error);

/// Puts the file `from` in the place of `to` (same folder) in one step; `to` may be missing.
void MoveOver(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace quenmar
