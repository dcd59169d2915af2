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
  const DWORD access = reading ? GENERIC_READ : GENERIC_WRITE;
  // A reader bears company; while this program writes, others may only look.
  const DWORD sharing =
      reading ? FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE : FILE_SHARE_READ;
  DWORD creation = OPEN_EXISTING;
  if (mode == FileHandle::Mode::kTruncate) creation = OPEN_ALWAYS;
  if (mode == FileHandle::Mode::kCreateNew) creation = CREATE_NEW;
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

// Permissions are inherited from the folder, and `MoveOver` keeps those of the file it replaces.
void FileHandle::TakePermissionsOf(const std::filesystem::path& /*model*/) {}
void FileHandle::TakeDefaultPermissions() {}

void FileHandle::FlushAndClose() {
  // Consoles and pipes cannot be flushed; only a disk's answer counts.
  const bool disk = ::GetFileType(Handle(handle_)) == FILE_TYPE_DISK;
  if (::FlushFileBuffers(Handle(handle_)) == 0 && disk) Fail(u"flush");
  const HANDLE handle = Handle(handle_);
  handle_ = kClosed;
  if (::CloseHandle(handle) == 0) Fail(u"close");
}

bool IsRefusal(const FileError& error) {
  switch (error.Number()) {
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return true;
    default:
      return false;
  }
}

void MoveOver(const std::filesystem::path& source, const std::filesystem::path& target) {
  const std::filesystem::path from = SystemPath(source);
  const std::filesystem::path to = SystemPath(target);
  constexpr DWORD kKeepAttributes = REPLACEFILE_IGNORE_MERGE_ERRORS;
  if (::GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES &&
      ::ReplaceFileW(to.c_str(), from.c_str(), nullptr, kKeepAttributes, nullptr, nullptr) != 0) {
    return;
  }
  constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (::MoveFileExW(from.c_str(), to.c_str(), kFlags) == 0) Fail(u"rename");
}

}  // namespace quenmar
