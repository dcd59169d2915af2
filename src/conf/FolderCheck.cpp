#include "conf/FolderCheck.h"

#include <utility>

#include "conf/ConfFolder.h"
#include "files/Folder.h"

namespace quenmar {

namespace {

constexpr auto kFolderSeparator = static_cast<char16_t>(Path::preferred_separator);
constexpr StringView kPattern = u"*.conf";

/// @return the folder of a folder box, with a separator, which makes "C:" the drive's root.
Path FolderOf(StringView box) { return box.empty() ? Path() : PathFromText(JoinPath(box, {})); }

std::vector<String> FilesIn(StringView box) {
  std::vector<String> files;
  for (const Path& name : ListConfFiles(FolderOf(box))) files.push_back(PathText(name));
  return files;
}

/// @return whether both texts name one folder, even in different forms.
bool AreSame(StringView one, StringView other) {
  return one == other || IsSame(FolderOf(one), FolderOf(other));
}

}  // namespace

FolderCheck CheckDistributionFolder(StringView distribution, StringView server) {
  FolderCheck check;
  if (!HasConfEntry(FolderOf(distribution))) {
    check.message = Message::kSelectDistributionFolder;
    check.commands = FolderCheck::Commands::kDisabled;
    return check;
  }
  if (HasConfEntry(FolderOf(server))) {
    if (AreSame(distribution, server)) {
      check.message = Message::kSameFolder;
      check.commands = FolderCheck::Commands::kDisabled;
      check.files.emplace();
      return check;
    }
    check.commands = FolderCheck::Commands::kEnabled;
  }
  check.files = FilesIn(distribution);
  if (check.files->empty()) {
    check.message = Message::kNoConfFiles;
    check.placeholder = JoinPath(distribution, kPattern);
    check.commands = FolderCheck::Commands::kDisabled;
  }
  return check;
}

FolderCheck CheckServerFolder(StringView distribution, StringView server) {
  FolderCheck check;
  if (ListConfFiles(FolderOf(server)).empty()) {
    check.message = Message::kSelectServerFolder;
    check.commands = FolderCheck::Commands::kDisabled;
    return check;
  }
  std::vector<String> files = FilesIn(distribution);
  if (files.empty()) return check;
  if (AreSame(distribution, server)) {
    check.message = Message::kSelectDifferentFolder;
    check.commands = FolderCheck::Commands::kDisabled;
  } else {
    check.commands = FolderCheck::Commands::kEnabled;
    check.files = std::move(files);
  }
  return check;
}

String JoinPath(StringView folder, StringView name) {
  const bool closed =
      folder.ends_with(kFolderSeparator) || (kFolderSeparator == u'\\' && folder.ends_with(u'/'));
  return String(folder) + (closed ? String() : String(1, kFolderSeparator)) + String(name);
}

}  // namespace quenmar
