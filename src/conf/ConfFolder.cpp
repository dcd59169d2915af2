#include "conf/ConfFolder.h"

#include "files/Folder.h"

namespace quenmar {

namespace {

constexpr StringView kEnding = u".conf";

}  // namespace

std::vector<Path> ListConfFiles(const Path& folder, std::error_code& error) {
  std::vector<Path> names;
  for (const FolderEntry& entry : EntriesEndingIn(kEnding, folder, error)) {
    if (entry.kind == FileKind::kFile) names.push_back(entry.name);
  }
  return names;
}

std::vector<Path> ListConfFiles(const Path& folder) {
  std::error_code unreadable;  // what cannot be read has nothing to offer
  return ListConfFiles(folder, unreadable);
}

bool HasConfEntry(const Path& folder) {
  std::error_code unreadable;
  return !EntriesEndingIn(kEnding, folder, unreadable).empty();
}

}  // namespace quenmar
