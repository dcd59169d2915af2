#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "ScratchFolder.h"
#include "files/Files.h"
#include "text/Charset.h"

namespace quenmar {

using Names = std::set<std::string>;

/// @return the names of all that stands in the folder, as UTF-8.
inline Names NamesIn(const ScratchFolder& folder) {
  Names names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Folder())) {
    names.insert(ToUtf8(PathText(entry.path().filename())));
  }
  return names;
}

}  // namespace quenmar
