#include <filesystem>
#include <system_error>

#include "files/Folder.h"
#include "text/CaseFolding.h"
#include "text/Charset.h"

namespace quenmar {

namespace fs = std::filesystem;

FileKind KindOf(const Path& path) {
  std::error_code error;
  switch (fs::status(path, error).type()) {
    case fs::file_type::not_found:
      return FileKind::kMissing;
    case fs::file_type::regular:
      return FileKind::kFile;
    case fs::file_type::directory:
      return FileKind::kFolder;
    default:
      return FileKind::kOther;
  }
}

std::vector<FolderEntry> EntriesEndingIn(StringView ending, const Path& folder, String& reason) {
  std::vector<FolderEntry> entries;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const Path name = entry->path().filename();
    const String text = PathText(name);
    if (text.size() >= ending.size() &&
        EqualIgnoringCase(StringView(text).substr(text.size() - ending.size()), ending)) {
      entries.push_back({name, KindOf(entry->path())});
    }
  }
  reason = error ? FromUtf8(error.message()) : String();
  return entries;
}

String FolderErrorText(const Path& folder) {
  std::error_code error;
  const fs::directory_iterator names(folder, error);
  if (!error) (void)fs::status(folder / ".", error);  // names alone open no file
  return error ? FromUtf8(error.message()) : String();
}

bool IsSame(const Path& one, const Path& other) {
  std::error_code error;
  return fs::equivalent(one, other, error);
}

bool HasOtherNames(const Path& path) {
  std::error_code error;
  const auto names = fs::hard_link_count(path, error);
  return !error && names > 1;
}

FileStamp StampOf(const Path& path) {
  std::error_code error;
  const auto time = fs::last_write_time(path, error);
  if (error) return {};
  const auto size = fs::file_size(path, error);  // fails for a folder
  return {time.time_since_epoch().count(), error ? 0 : size};
}

}  // namespace quenmar
