#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/limits.h>
#include <sys/xattr.h>
#endif

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <map>
#include <string>
#include <system_error>

#include "files/FileHandle.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr std::intptr_t kClosed = -1;

[[noreturn]] void Fail(const char16_t* operation, int number = errno) {
  throw FileError(number, operation, FromUtf8(std::generic_category().message(number)));
}

int FlagsOf(FileHandle::Mode mode) {
  switch (mode) {
    case FileHandle::Mode::kRead:
      return O_RDONLY;
    case FileHandle::Mode::kProbeForWrite:
      return O_WRONLY;
    case FileHandle::Mode::kUpdate:
      return O_RDWR;
    case FileHandle::Mode::kTruncate:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case FileHandle::Mode::kCreateNew:
    case FileHandle::Mode::kCreatePrivate:
      return O_WRONLY | O_CREAT | O_EXCL;
  }
  return O_RDONLY;
}

int Descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

/// Makes a file that is too large an error, which can be reported; the signal would end the
/// program.
void IgnoreSizeSignal() {
  [[maybe_unused]] static const bool kDone = [] {
    struct sigaction action {};
    if (::sigaction(SIGXFSZ, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
      action.sa_handler = SIG_IGN;
      return ::sigaction(SIGXFSZ, &action, nullptr) == 0;
    }
    return true;
  }();
}

#ifdef __linux__
/// Access control lists are among them.
using ExtendedAttributes = std::map<std::string, std::string>;

/// @return whether the system itself sets and protects the attribute.
bool IsGuarded(const std::string& name) {
  return name.starts_with("security.") || name.starts_with("trusted.");
}

/// @param list,get the system's functions, for a path or for an open file
template <typename List, typename Get>
ExtendedAttributes ReadAttributes(const List& list, const Get& get) {
  std::string names(XATTR_LIST_MAX, '\0');
  const ssize_t size = list(names.data(), names.size());
  if (size < 0 && errno != ENOTSUP) Fail(u"listxattr");
  names.resize(static_cast<size_t>(std::max<ssize_t>(size, 0)));
  ExtendedAttributes attributes;
  std::string buffer(XATTR_SIZE_MAX, '\0');
  for (size_t start = 0; start < names.size();) {
    const std::string name = names.c_str() + start;
    start += name.size() + 1;
    const ssize_t length = get(name.c_str(), buffer.data(), buffer.size());
    if (length >= 0) {
      attributes[name] = buffer.substr(0, static_cast<size_t>(length));
    } else if (!IsGuarded(name)) {
      Fail(u"getxattr");
    }
  }
  return attributes;
}

void TakeExtendedAttributes(int descriptor, const char* model) {
  const ExtendedAttributes wanted =
      ReadAttributes([model](char* names, size_t size) { return ::listxattr(model, names, size); },
                     [model](const char* name, char* value, size_t size) {
                       return ::getxattr(model, name, value, size);
                     });
  const ExtendedAttributes own = ReadAttributes(
      [descriptor](char* names, size_t size) { return ::flistxattr(descriptor, names, size); },
      [descriptor](const char* name, char* value, size_t size) {
        return ::fgetxattr(descriptor, name, value, size);
      });
  for (const auto& [name, value] : own) {  // such as a list inherited from the folder
    if (wanted.contains(name) || IsGuarded(name)) continue;
    if (::fremovexattr(descriptor, name.c_str()) != 0) Fail(u"removexattr");
  }
  for (const auto& [name, value] : wanted) {
    if (const auto same = own.find(name); same != own.end() && same->second == value) continue;
    if (::fsetxattr(descriptor, name.c_str(), value.data(), value.size(), 0) != 0 &&
        !IsGuarded(name)) {
      Fail(u"setxattr");
    }
  }
}
#else
void TakeExtendedAttributes(int /*descriptor*/, const char* /*model*/) {}
#endif

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Mode mode)
    : handle_(::open(path.c_str(), FlagsOf(mode) | O_CLOEXEC,
                     mode == Mode::kCreatePrivate ? S_IRUSR | S_IWUSR : 0666)) {
  if (handle_ == kClosed) Fail(u"open");
  if (mode != Mode::kRead) IgnoreSizeSignal();
}

FileHandle::~FileHandle() {
  if (handle_ != kClosed) ::close(Descriptor(handle_));
}

size_t FileHandle::Read(char* buffer, size_t size) {
  for (;;) {
    const ssize_t count = ::read(Descriptor(handle_), buffer, size);
    if (count >= 0) return static_cast<size_t>(count);
    if (errno != EINTR) Fail(u"read");
  }
}

void FileHandle::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(Descriptor(handle_), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<size_t>(count));
    } else if (errno != EINTR) {
      Fail(u"write");
    }
  }
}

std::uint64_t FileHandle::Position() const {
  const off_t position = ::lseek(Descriptor(handle_), 0, SEEK_CUR);
  if (position < 0) Fail(u"seek");
  return static_cast<std::uint64_t>(position);
}

void FileHandle::Seek(std::uint64_t position) {
  if (::lseek(Descriptor(handle_), static_cast<off_t>(position), SEEK_SET) < 0) Fail(u"seek");
}

void FileHandle::Truncate(std::uint64_t size) {
  if (::ftruncate(Descriptor(handle_), static_cast<off_t>(size)) != 0) Fail(u"truncate");
}

void FileHandle::TakeAttributesOf(const std::filesystem::path& model) {
  struct stat wanted {};
  struct stat own {};
  if (::stat(model.c_str(), &wanted) != 0 || ::fstat(Descriptor(handle_), &own) != 0) Fail(u"stat");
  const bool foreign = wanted.st_uid != own.st_uid || wanted.st_gid != own.st_gid;
  if (foreign && ::fchown(Descriptor(handle_), wanted.st_uid, wanted.st_gid) != 0) Fail(u"chown");
  TakeExtendedAttributes(Descriptor(handle_), model.c_str());
  // Last, so that a failure above leaves a private file private.
  if (::fchmod(Descriptor(handle_), wanted.st_mode & 07777U) != 0) Fail(u"chmod");
}

void FileHandle::Flush() {
  // Devices and pipes cannot be flushed to a disk; they answer EINVAL or EROFS.
  if (::fsync(Descriptor(handle_)) != 0 && errno != EINVAL && errno != EROFS) Fail(u"flush");
}

void FileHandle::Close() {
  const int descriptor = Descriptor(handle_);
  handle_ = kClosed;
  if (::close(descriptor) != 0) Fail(u"close");
}

bool IsDiskFailure(const FileError& error) {
  switch (error.Number()) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
    case EIO:
      return true;
    default:
      return false;
  }
}

void MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) Fail(u"rename");
}

void TakePlaceOf(const std::filesystem::path& to, const std::filesystem::path& from) {
  MoveOver(from, to);
}

void EnsureReplaceable(const std::filesystem::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) {
    if (errno == ENOENT) return;
    Fail(u"stat");
  }
  if (S_ISLNK(status.st_mode)) return;
  if (S_ISDIR(status.st_mode)) Fail(u"open", EISDIR);
  if (!S_ISREG(status.st_mode)) Fail(u"open", EEXIST);  // opening a pipe would wait for a reader
  const FileHandle probe(path, FileHandle::Mode::kProbeForWrite);
}

}  // namespace quenmar
