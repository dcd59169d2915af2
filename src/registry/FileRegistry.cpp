#include "registry/FileRegistry.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "files/FileError.h"
#include "files/Folder.h"

namespace quenmar {

namespace {

String FullKey(RegistryRoot root, StringView subkey) {
  String key = root == RegistryRoot::kLocalMachine ? u"HKEY_LOCAL_MACHINE" : u"HKEY_CURRENT_USER";
  if (!subkey.empty()) key.append(u"\\").append(subkey);
  return key;
}

}  // namespace

FileRegistry::FileRegistry(Path path) : path_(std::move(path)) { Load(); }

String FileRegistry::RegReadString(RegistryRoot root, StringView subkey, StringView name,
                                   StringView defaultText) const {
  const auto value = file_ ? file_->Find(FullKey(root, subkey), name) : std::nullopt;
  return value ? *value : String(defaultText);
}

bool FileRegistry::RegWriteString(RegistryRoot root, StringView subkey, StringView name,
                                  StringView value) {
  if (path_.empty()) return false;
  Load();
  if (!file_) return false;
  RegistryFile changed = *file_;
  if (!changed.Set(FullKey(root, subkey), name, value)) return false;
  std::error_code error;  // a folder that is still missing shows when the file is written
  if (path_.has_parent_path()) std::filesystem::create_directories(path_.parent_path(), error);
  try {
    ReplaceBytes(path_, changed.Bytes());
  } catch (const FileError&) {
    return false;
  }
  file_ = std::move(changed);
  return true;
}

void FileRegistry::Load() {
  errorText_.clear();
  file_ = RegistryFile();
  if (path_.empty() || KindOf(path_) == FileKind::kMissing) return;
  String reason = u"it is no registry file";
  try {
    file_ = RegistryFile::Parse(ReadBytes(path_));
  } catch (const FileError& failure) {
    file_.reset();
    reason = failure.Description();
  }
  if (!file_) errorText_ = u"Cannot read the registry file " + PathText(path_) + u": " + reason;
}

}  // namespace quenmar
