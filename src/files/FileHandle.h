/// An open file. What differs between the systems is in FileHandlePosix.cpp and
/// FileHandleWindows.cpp.
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
    kUpdate,         ///< an existing file, for reading and writing
    kTruncate,       ///< for writing; created when missing, emptied otherwise
    kCreateNew,      ///< for writing; fails when the name is taken
    kCreatePrivate,  ///< as `kCreateNew`; readable by its owner only, on Windows with its folder's
                     ///< permissions
  };

  FileHandle(const std::filesystem::path& path, Mode mode);
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle();

  /// @return how many bytes were read into `buffer`, at most `size`; 0 at the end of the file.
  [[nodiscard]] size_t Read(char* buffer, size_t size);

  /// Writes where the last reading or writing ended. After a failure `Position` is where it
  /// stopped.
  void Write(std::string_view bytes);

  [[nodiscard]] std::uint64_t Position() const;
  void Seek(std::uint64_t position);

  /// Cuts the file off behind `size` bytes.
  void Truncate(std::uint64_t size);

  /// Gives the file the owner, the permissions and the extended attributes of `model`, which
  /// exists. Attributes that the system protects, such as security labels, are kept where it allows
  /// that. Does nothing on Windows: see `TakePlaceOf`.
  void TakeAttributesOf(const std::filesystem::path& model);

  /// Flushes the content to the disk; a full disk is noticed here at the latest.
  void Flush();

  void Close();

 private:
  std::intptr_t handle_;
};

/// @return whether the disk is full or fails, or the file is larger than it may be: writing to
/// another place there would fail, too.
[[nodiscard]] bool IsDiskFailure(const FileError& error);

/// Replaces what is at `to` (a file, a link or nothing) by the file `from` of the same folder, in
/// one step.
void MoveOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// As `MoveOver`, for a file `to` that exists; on Windows its permissions and attributes stay.
/// Throws `FileDamaged` when it is gone and `from` could not take its place.
void TakePlaceOf(const std::filesystem::path& to, const std::filesystem::path& from);

/// Throws `FileError` unless `MoveOver` may replace what is at the path: a link, a regular file
/// that this user may write to, or nothing.
void EnsureReplaceable(const std::filesystem::path& path);

}  // namespace quenmar
