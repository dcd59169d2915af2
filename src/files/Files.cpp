#include "files/Files.h"

#include <algorithm>
#include <array>
#include <functional>
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

/// @return a name for a new file in the folder of `target`, not too long for file systems.
Path NameBeside(const Path& target) {
  constexpr size_t kMostUnits = 200;
  Path name = target.filename().native().substr(0, kMostUnits);
  name += '.';
  name += std::to_string(std::random_device()());
  name += ".tmp";
  return target.parent_path() / name;
}

/// A file that is being made, removed again unless it is finished.
class NewFile {
 public:
  /// Throws `FileError` when the folder takes no new file, or the name is taken.
  NewFile(Path path, FileHandle::Mode mode) : path_(std::move(path)) {
    handle_.emplace(path_, mode);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (finished_) return;
    handle_.reset();          // Windows removes no open file
    std::error_code ignored;  // a failure only leaves the temporary file
    fs::remove(path_, ignored);
  }

  void TakeAttributesOf(const Path& model) { handle_->TakeAttributesOf(model); }

  void Fill(std::string_view bytes) {
    handle_->Write(bytes);
    handle_->Flush();
    handle_->Close();
  }

  void Finish() { finished_ = true; }

  void MoveOver(const Path& target) {
    quenmar::MoveOver(path_, target);
    Finish();
  }

  void TakePlaceOf(const Path& target) {
    try {
      quenmar::TakePlaceOf(target, path_);
    } catch (const FileDamaged&) {
      Finish();  // this file is all that is left
      throw;
    }
    Finish();
  }

 private:
  Path path_;
  std::optional<FileHandle> handle_;
  bool finished_ = false;
};

/// @return whether `step` was done; false where the system refuses it, so that the caller tries
/// another way. Throws what another way cannot avoid, such as a full disk.
bool Try(const std::function<void()>& step) {
  try {
    step();
    return true;
  } catch (const FileDamaged&) {
    throw;
  } catch (const FileError& error) {
    if (IsDiskFailure(error)) throw;
    return false;
  }
}

/// @return whether the existing file `target` was replaced; where not, it is as it was.
bool ReplaceByRename(const Path& target, std::string_view bytes,
                     const std::function<void()>& ready) {
  std::optional<NewFile> temporary;
  const auto make = [&] {
    temporary.emplace(NameBeside(target), FileHandle::Mode::kCreatePrivate);
    temporary->TakeAttributesOf(target);
  };
  if (!Try(make)) return false;
  temporary->Fill(bytes);
  ready();
  return Try([&] { temporary->TakePlaceOf(target); });
}

void Create(const Path& target, std::string_view bytes) {
  const auto byRename = [&] {
    NewFile temporary(NameBeside(target), FileHandle::Mode::kCreateNew);
    temporary.Fill(bytes);
    temporary.MoveOver(target);
  };
  if (Try(byRename)) return;
  NewFile file(target, FileHandle::Mode::kCreateNew);
  file.Fill(bytes);
  file.Finish();
}

/// @param file the file at `path`, just opened
std::string ReadAll(FileHandle& file, const Path& path) {
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

/// Gives the file its old bytes again, of which the first `lost` were written over; no others are
/// touched, as a disk that failed once may fail there, too.
void PutBack(FileHandle& file, std::string_view old, size_t lost) {
  file.Seek(0);
  file.Write(old.substr(0, lost));
  file.Truncate(old.size());
  file.Flush();
}

/// Writes over a regular file. After a failure it has its old bytes again, or `FileDamaged` is
/// thrown.
void OverwriteInPlace(const Path& path, std::string_view bytes,
                      const std::function<void()>& ready) {
  FileHandle file(path, FileHandle::Mode::kUpdate);
  const std::string old = ReadAll(file, path);
  const std::string_view head = bytes.substr(0, old.size());
  bool overwriting = false;
  try {
    // What is beyond the old end is written first, so that a full disk is noticed before an old
    // byte is lost. Allocating is not enough: some file systems notice only when they flush.
    if (bytes.size() > old.size()) {
      file.Write(bytes.substr(old.size()));
      file.Flush();
    }
    ready();
    file.Seek(0);
    overwriting = true;
    file.Write(head);
    file.Flush();
    if (bytes.size() < old.size()) {
      file.Truncate(bytes.size());  // last: until here the old bytes' room is still there
      file.Flush();
    }
  } catch (const FileError& first) {
    try {
      const auto end = overwriting ? file.Position() : 0;
      PutBack(file, old, std::min<std::uint64_t>(end, head.size()));
    } catch (const FileError&) {
      throw FileDamaged(first.Number(), first.Source(), first.Description());
    }
    throw;
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
  return ReadAll(file, path);
}

Path BehindLinks(Path path) {
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

bool IsWithin(const Path& path, const Path& folder) {
  std::error_code error;  // a path that cannot be resolved is used as it is
  const Path target = fs::absolute(BehindLinks(path), error);
  Path part = fs::weakly_canonical(target, error);
  while (!IsSame(part, folder)) {
    if (!part.has_relative_path()) return false;
    part = part.parent_path();
  }
  return true;
}

void ReplaceBytes(const Path& path, std::string_view bytes, const std::function<void()>& ready) {
  const FileKind kind = KindOf(path);
  if (kind != FileKind::kFile && kind != FileKind::kMissing) {
    WriteInPlace(path, bytes);  // the target of a link to a pipe or device has no path
    return;
  }
  const Path target = BehindLinks(path);
  if (kind == FileKind::kMissing) {
    Create(target, bytes);
    return;
  }
  // Renaming would ignore a write protection: check the file itself first.
  { const FileHandle probe(target, FileHandle::Mode::kProbeForWrite); }
  bool told = false;
  const auto tellOnce = [&] {
    if (ready && !std::exchange(told, true)) ready();
  };
  if (HasOtherNames(target) || !ReplaceByRename(target, bytes, tellOnce)) {
    OverwriteInPlace(target, bytes, tellOnce);
  }
}

void CopyBeside(const Path& file, std::string_view bytes, const Path& copy) {
  EnsureReplaceable(copy);
  NewFile temporary(NameBeside(copy), FileHandle::Mode::kCreatePrivate);
  try {
    temporary.TakeAttributesOf(file);
  } catch (const FileError&) {  // then it stays private, as it was created
  }
  temporary.Fill(bytes);
  temporary.MoveOver(copy);
}

bool IsMissing(const Path& path) {
  std::error_code error;
  return KindOf(path) == FileKind::kMissing && !fs::is_symlink(fs::symlink_status(path, error));
}

void WriteInPlace(const Path& path, std::string_view bytes) {
  FileHandle file(path, FileHandle::Mode::kTruncate);
  file.Write(bytes);
  file.Flush();
  file.Close();
}

}  // namespace quenmar
