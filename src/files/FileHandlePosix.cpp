#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "files/FileHandle.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr std::intptr_t kClosed = -1;

[[noreturn]] void Fail(const char16_t* operation) {
  const int number = errno;
  throw FileError(number, operation, FromUtf8(std::generic_category().message(number)));
}

int FlagsOf(FileHandle::Mode mode) {
  switch (mode) {
    case FileHandle::Mode::kRead:
      return O_RDONLY;
    case FileHandle::Mode::kProbeForWrite:
      return O_WRONLY;
    case FileHandle::Mode::kTruncate:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case FileHandle::Mode::kCreateNew:
      return O_WRONLY | O_CREAT | O_EXCL;
  }
  return O_RDONLY;
}

int Descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Mode mode)
    : handle_(::open(path.c_str(), FlagsOf(mode) | O_CLOEXEC,
                     mode == Mode::kCreateNew ? S_IRUSR | S_IWUSR : 0666)) {
  if (handle_ == kClosed) Fail(u"open");
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

void FileHandle::TakePermissionsOf(const std::filesystem::path& model) {
  struct stat status {};
  if (::stat(model.c_str(), &status) != 0) Fail(u"stat");
  const bool foreign = status.st_uid != ::geteuid() || status.st_gid != ::getegid();
  if (foreign && ::fchown(Descriptor(handle_), status.st_uid, status.st_gid) != 0) Fail(u"chown");
  if (::fchmod(Descriptor(handle_), status.st_mode & 07777U) != 0) Fail(u"chmod");
}

void FileHandle::TakeDefaultPermissions() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  if (::fchmod(Descriptor(handle_), 0666U & ~mask) != 0) Fail(u"chmod");
}

void FileHandle::FlushAndClose() {
  // Devices and pipes cannot be flushed to a disk; they answer EINVAL or EROFS.
  if (::fsync(Descriptor(handle_)) != 0 && errno != EINVAL && errno != EROFS) Fail(u"flush");
  const int descriptor = Descriptor(handle_);
  handle_ = kClosed;
  if (::close(descriptor) != 0) Fail(u"close");
}

bool IsRefusal(const FileError& error) {
  switch (error.Number()) {
    case EACCES:
    case EPERM:
    case EROFS:
    case ENAMETOOLONG:
      return true;
    default:
      return false;
  }
}

void MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) Fail(u"rename");
}

}  // namespace quenmar
