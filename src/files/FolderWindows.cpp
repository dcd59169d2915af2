#include <windows.h>

#include "files/Folder.h"
#include "files/SystemPath.h"

namespace quenmar {

namespace {

FileKind KindOf(DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileKind::kFolder;
  return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? FileKind::kOther : FileKind::kFile;
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

std::vector<FolderEntry> EntriesEndingIn(StringView ending, const Path& folder,
                                         std::error_code& error) {
  error.clear();
  std::vector<FolderEntry> entries;
  // The system itself compares the names, by the rules of the disk that they stand on.
  const Path pattern = folder / PathFromText(u"*" + String(ending));
  WIN32_FIND_DATAW entry;
  const HANDLE search =
      folder.empty() ? INVALID_HANDLE_VALUE : ::FindFirstFileW(SystemPath(pattern).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD number = folder.empty() ? ERROR_PATH_NOT_FOUND : ::GetLastError();
    if (number != ERROR_FILE_NOT_FOUND) {
      error.assign(static_cast<int>(number), std::system_category());
    }
    return entries;
  }
  do {
    entries.push_back({entry.cFileName, KindOf(entry.dwFileAttributes)});
  } while (::FindNextFileW(search, &entry) != 0);
  ::FindClose(search);
  return entries;
}

}  // namespace quenmar
