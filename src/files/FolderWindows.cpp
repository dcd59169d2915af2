#include <windows.h>

#include <optional>
#include <tuple>

#include "files/Folder.h"
#include "files/SystemWindows.h"

namespace quenmar {

namespace {

FileKind KindOf(DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileKind::kFolder;
  return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? FileKind::kOther : FileKind::kFile;
}

/// The disk and the number on it, which no other file or folder has at the time.
using Identity = std::tuple<DWORD, DWORD, DWORD>;

std::optional<BY_HANDLE_FILE_INFORMATION> InformationOn(const Path& path) {
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE handle = ::CreateFileW(SystemPath(path).c_str(), 0, kSharing, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION found;
  const bool known = ::GetFileInformationByHandle(handle, &found) != 0;
  ::CloseHandle(handle);
  if (!known) return {};
  return found;
}

std::optional<Identity> IdentityOf(const Path& path) {
  const auto found = InformationOn(path);
  if (!found) return {};
  return Identity(found->dwVolumeSerialNumber, found->nFileIndexHigh, found->nFileIndexLow);
}

/// Finds the first entry of a folder whose name ends in `ending`.
/// @param reason receives the system's message when that failed; else it is empty
/// @return INVALID_HANDLE_VALUE where there is none, else what `FindClose` takes.
HANDLE FindFirst(StringView ending, const Path& folder, WIN32_FIND_DATAW& entry, String& reason) {
  reason.clear();
  // The system itself compares the names, by the rules of their disk.
  const Path pattern = folder / PathFromText(u"*" + String(ending));
  const HANDLE search =
      folder.empty() ? INVALID_HANDLE_VALUE : ::FindFirstFileW(SystemPath(pattern).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD number = folder.empty() ? ERROR_PATH_NOT_FOUND : ::GetLastError();
    if (number != ERROR_FILE_NOT_FOUND) reason = SystemMessage(number);
  }
  return search;
}

}  // namespace

FileKind KindOf(const Path& path) {
  const DWORD attributes = ::GetFileAttributesW(SystemPath(path).c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) return KindOf(attributes);
  switch (::GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      return FileKind::kMissing;
    default:
      return FileKind::kOther;
  }
}

std::vector<FolderEntry> EntriesEndingIn(StringView ending, const Path& folder, String& reason) {
  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirst(ending, folder, entry, reason);
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    entries.push_back({entry.cFileName, KindOf(entry.dwFileAttributes)});
  } while (::FindNextFileW(search, &entry) != 0);
  const DWORD last = ::GetLastError();
  if (last != ERROR_NO_MORE_FILES) reason = SystemMessage(last);  // such as a share that went away
  ::FindClose(search);
  return entries;
}

String FolderErrorText(const Path& folder) {
  String reason;
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirst({}, folder, entry, reason);
  if (search != INVALID_HANDLE_VALUE) ::FindClose(search);
  return reason;
}

bool IsSame(const Path& one, const Path& other) {
  const std::optional<Identity> first = IdentityOf(one);
  return first && first == IdentityOf(other);
}

bool HasOtherNames(const Path& path) {
  const DWORD attributes = ::GetFileAttributesW(SystemPath(path).c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    return true;
  }
  const auto found = InformationOn(path);
  return found && found->nNumberOfLinks > 1;
}

FileStamp StampOf(const Path& path) {
  const auto found = InformationOn(path);
  if (!found) return {};
  const auto join = [](DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32U) | low;
  };
  const FILETIME& time = found->ftLastWriteTime;
  return {static_cast<std::int64_t>(join(time.dwHighDateTime, time.dwLowDateTime)),
          join(found->nFileSizeHigh, found->nFileSizeLow)};
}

}  // namespace quenmar
