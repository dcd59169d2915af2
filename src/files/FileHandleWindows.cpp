#include <windows.h>

#include <string>

#include "files/FileHandle.h"
#include "files/SystemWindows.h"

namespace quenmar {

namespace {

const auto kClosed = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

[[noreturn]] void Fail(const char16_t* operation) {
  const DWORD number = ::GetLastError();
  throw FileError(static_cast<int>(number), operation, SystemMessage(number));
}

HANDLE Handle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::intptr_t Open(const std::filesystem::path& path, FileHandle::Mode mode) {
  const bool reading = mode == FileHandle::Mode::kRead;
  DWORD access = reading ? GENERIC_READ : GENERIC_WRITE;
  if (mode == FileHandle::Mode::kUpdate) access |= GENERIC_READ;
  // Readers share the file; while this program writes, others may only read.
  const DWORD sharing =
      reading ? FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE : FILE_SHARE_READ;
  DWORD creation = OPEN_EXISTING;
  if (mode == FileHandle::Mode::kTruncate) creation = OPEN_ALWAYS;
  if (mode == FileHandle::Mode::kCreateNew || mode == FileHandle::Mode::kCreatePrivate) {
    creation = CREATE_NEW;
  }
  return reinterpret_cast<std::intptr_t>(::CreateFileW(SystemPath(path).c_str(), access, sharing,
                                                       nullptr, creation, FILE_ATTRIBUTE_NORMAL,
                                                       nullptr));
}

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Mode mode) : handle_(Open(path, mode)) {
  if (handle_ == kClosed) Fail(u"open");
  // Opening with CREATE_ALWAYS would fail on hidden files, so existing ones are emptied here;
  // devices have no end to set.
  if (mode == Mode::kTruncate && ::GetFileType(Handle(handle_)) == FILE_TYPE_DISK &&
      ::SetEndOfFile(Handle(handle_)) == 0) {
    const DWORD number = ::GetLastError();
    ::CloseHandle(Handle(handle_));
    ::SetLastError(number);
    Fail(u"truncate");
  }
}

FileHandle::~FileHandle() {
  if (handle_ != kClosed) ::CloseHandle(Handle(handle_));
}

size_t FileHandle::Read(char* buffer, size_t size) {
  DWORD count = 0;
  if (::ReadFile(Handle(handle_), buffer, static_cast<DWORD>(size), &count, nullptr) == 0) {
    if (::GetLastError() == ERROR_BROKEN_PIPE) return 0;  // the end of a pipe
    Fail(u"read");
  }
  return count;
}

void FileHandle::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    constexpr size_t kMost = 1U << 30U;
    DWORD count = 0;
    const auto size = static_cast<DWORD>(bytes.size() < kMost ? bytes.size() : kMost);
    if (::WriteFile(Handle(handle_), bytes.data(), size, &count, nullptr) == 0) Fail(u"write");
    bytes.remove_prefix(count);
  }
}

std::uint64_t FileHandle::Position() const {
  LARGE_INTEGER position;
  if (::SetFilePointerEx(Handle(handle_), {}, &position, FILE_CURRENT) == 0) Fail(u"seek");
  return static_cast<std::uint64_t>(position.QuadPart);
}

void FileHandle::Seek(std::uint64_t position) {
  LARGE_INTEGER distance;
  distance.QuadPart = static_cast<LONGLONG>(position);
  if (::SetFilePointerEx(Handle(handle_), distance, nullptr, FILE_BEGIN) == 0) Fail(u"seek");
}

void FileHandle::Truncate(std::uint64_t size) {
  Seek(size);
  if (::SetEndOfFile(Handle(handle_)) == 0) Fail(u"truncate");
}

// A new file inherits its permissions from the folder.
void FileHandle::TakeAttributesOf(const std::filesystem::path& /*model*/) {}

void FileHandle::Flush() {
  // Consoles and pipes cannot be flushed; only a disk's answer counts.
  const bool disk = ::GetFileType(Handle(handle_)) == FILE_TYPE_DISK;
  if (::FlushFileBuffers(Handle(handle_)) == 0 && disk) Fail(u"flush");
}

void FileHandle::Close() {
  const HANDLE handle = Handle(handle_);
  handle_ = kClosed;
  if (::CloseHandle(handle) == 0) Fail(u"close");
}

bool IsDiskFailure(const FileError& error) {
  constexpr int kQuotaExceeded = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which MinGW lacks
  switch (error.Number()) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kQuotaExceeded:
    case ERROR_FILE_TOO_LARGE:
    case ERROR_WRITE_FAULT:
    case ERROR_IO_DEVICE:
    case ERROR_CRC:
      return true;
    default:
      return false;
  }
}

void MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (::MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), kFlags) == 0) Fail(u"rename");
}

void TakePlaceOf(const std::filesystem::path& to, const std::filesystem::path& from) {
  const std::filesystem::path target = SystemPath(to);
  if (::ReplaceFileW(target.c_str(), SystemPath(from).c_str(), nullptr,
                     REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0) {
    return;
  }
  // This failure alone may have removed the old file already.
  if (::GetLastError() != ERROR_UNABLE_TO_MOVE_REPLACEMENT) Fail(u"replace");
  try {
    MoveOver(from, to);
  } catch (const FileError& error) {
    if (::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES) throw;
    throw FileDamaged(error.Number(), error.Source(), error.Description());
  }
}

void EnsureReplaceable(const std::filesystem::path& path) {
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  // The link itself, not the file behind it.
  const HANDLE handle = ::CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE, kSharing, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (handle != INVALID_HANDLE_VALUE) {
    ::CloseHandle(handle);
  } else if (::GetLastError() != ERROR_FILE_NOT_FOUND) {
    Fail(u"open");
  }
}

}  // namespace quenmar
