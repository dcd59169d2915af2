#include "conf/ConfFolder.h"

#include "files/Folder.h"

namespace quenmar {

namespace {

constexpr StringView kEnding = u".conf";

}  // namespace

std::vector<Path> ListConfFiles(const Path& folder, String& reason) {
  std::vector<Path> names;
  for (const FolderEntry& entry : EntriesEndingIn(kEnding, folder, reason)) {
    if (entry.kind == FileKind::kFile) names.push_back(entry.name);
  }
  return names;
}

std::vector<Path> ListConfFiles(const Path& folder) {
  String unreadable;  // a folder that cannot be read has none
  return ListConfFiles(folder, unreadable);
}

bool HasConfEntry(const Path& folder) {
  String unreadable;
  return !EntriesEndingIn(kEnding, folder, unreadable).empty();
}

}  // namespace quenmar
