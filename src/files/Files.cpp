#include "files/Files.h"

#include <array>
#include <memory>
#include <optional>
#include <random>
#include <system_error>
#include <utility>

#include "files/FileError.h"
#include "files/FileHandle.h"
#include "files/Folder.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

namespace fs = std::filesystem;

constexpr size_t kBlock = 64UL * 1024;
constexpr int kMostLinks = 40;  // as many as the systems themselves follow

/// @return the file behind symbolic links, also one that is yet to be created.
Path BehindLinks(Path path) {
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

/// A new file in the folder of a target, removed again unless it is moved over the target.
class TemporaryFile {
 public:
  /// Throws `FileError` when the folder takes no new file. Without a model the file gets the
  /// default permissions. Where the model's owner cannot be kept, a copy is for this user's eyes
  /// only; any other file throws as well.
  TemporaryFile(const Path& target, const std::optional<Path>& model, bool isCopy)
      : path_(NameBeside(target)) {
    handle_.emplace(path_, FileHandle::Mode::kCreateNew);
    try {
      model ? handle_->TakePermissionsOf(*model) : handle_->TakeDefaultPermissions();
    } catch (const FileError&) {
      if (isCopy) return;  // as it was created
      Remove();
      throw;
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!moved_) Remove();
  }

  void MoveTo(const Path& target, std::string_view bytes) {
    handle_->Write(bytes);
    handle_->FlushAndClose();
    MoveOver(path_, target);
    moved_ = true;
  }

 private:
  static Path NameBeside(const Path& target) {
    Path name = target;
    name += '.';
    name += std::to_string(std::random_device()());
    name += ".tmp";
    return name;
  }

  void Remove() {
    handle_.reset();          // Windows removes no open file
    std::error_code ignored;  // a leftover is all that a failure here costs
    fs::remove(path_, ignored);
  }

  Path path_;
  std::optional<FileHandle> handle_;
  bool moved_ = false;
};

/// @return nothing where no temporary file may be made, so that the caller writes in place. Other
/// failures, such as a full disk, pass through: writing in place would meet them halfway.
std::unique_ptr<TemporaryFile> TryTemporaryFile(const Path& target,
                                                const std::optional<Path>& model, bool isCopy) {
  try {
    return std::make_unique<TemporaryFile>(target, model, isCopy);
  } catch (const FileError& error) {
    if (IsRefusal(error)) return nullptr;
    throw;
  }
}

/// Writes over a regular file; when that fails, tries to put its old content back.
void OverwriteInPlace(const Path& path, std::string_view bytes) {
  const std::string old = ReadBytes(path);
  try {
    WriteInPlace(path, bytes);
  } catch (const FileError&) {
    try {
      WriteInPlace(path, old);
    } catch (const FileError&) {  // the first failure is the one to report
    }
    throw;
  }
}

/// @param original the file that `bytes` are a copy of, if they are
void Replace(const Path& path, std::string_view bytes, const std::optional<Path>& original) {
  const Path target = BehindLinks(path);
  const FileKind kind = KindOf(target);
  std::optional<Path> model = original;
  std::optional<FileHandle> existing;
  if (kind != FileKind::kMissing) {
    // Renaming would pass over a write protection: ask the file itself first.
    existing.emplace(target, FileHandle::Mode::kProbeForWrite);
    if (!model) model = target;
  }
  const bool replaceable = !existing || kind == FileKind::kFile;
  const auto temporary =
      replaceable ? TryTemporaryFile(target, model, original.has_value()) : nullptr;
  if (original && existing && replaceable && !temporary) existing->TakePermissionsOf(*original);
  const bool overwrites = existing && replaceable;
  existing.reset();  // Windows replaces no open file
  if (temporary) {
    temporary->MoveTo(target, bytes);
  } else if (overwrites) {
    OverwriteInPlace(target, bytes);
  } else {
    WriteInPlace(target, bytes);
  }
}

}  // namespace

String PathText(const Path& path) {
  const Path::string_type& native = path.native();
  if constexpr (std::is_same_v<Path::value_type, char>) {
    return FromUtf8KeepingBytes(path.string());
  } else {
    return {native.begin(), native.end()};
  }
}

Path PathFromText(StringView text) {
  if constexpr (std::is_same_v<Path::value_type, char>) {
    return ToUtf8KeepingBytes(text).value_or(ToUtf8(text));
  } else {
    return Path::string_type(text.begin(), text.end());
  }
}

std::string ReadBytes(const Path& path) {
  FileHandle file(path, FileHandle::Mode::kRead);
  std::string bytes;
  std::error_code unknown;
  if (const auto size = fs::file_size(path, unknown); !unknown) bytes.reserve(size);
  std::array<char, kBlock> block;
  for (size_t count = file.Read(block.data(), block.size()); count > 0;
       count = file.Read(block.data(), block.size())) {
    bytes.append(block.data(), count);
  }
  return bytes;
}

void ReplaceBytes(const Path& path, std::string_view bytes) { Replace(path, bytes, std::nullopt); }

void CopyWhole(const Path& from, const Path& to) { Replace(to, ReadBytes(from), from); }

bool IsMissing(const Path& path) {
  std::error_code error;
  return KindOf(path) == FileKind::kMissing && !fs::is_symlink(fs::symlink_status(path, error));
}

void WriteInPlace(const Path& path, std::string_view bytes) {
  FileHandle file(path, FileHandle::Mode::kTruncate);
  file.Write(bytes);
  file.FlushAndClose();
}

}  // namespace quenmar
