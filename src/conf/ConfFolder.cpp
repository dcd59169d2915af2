#include "conf/ConfFolder.h"

#include <filesystem>
#include <system_error>

#include "text/CaseFolding.h"

namespace quenmar {

std::vector<Path> ListConfFiles(const Path& folder) {
  namespace fs = std::filesystem;
  std::vector<Path> names;
  std::error_code error;  // an entry or a folder that cannot be read has no files to offer
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const Path name = entry->path().filename();
    std::error_code unreadable;
    if (EqualIgnoringCase(PathText(name.extension()), u".conf") &&
        entry->is_regular_file(unreadable)) {
      names.push_back(name);
    }
  }
  return names;
}

}  // namespace quenmar
