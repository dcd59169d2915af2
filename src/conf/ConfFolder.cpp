#include "conf/ConfFolder.h"

#include <filesystem>
#include <system_error>

#include "text/CaseFolding.h"

namespace quenmar {

namespace {

namespace fs = std::filesystem;

/// @return the entries of a folder that are named *.conf; none when it cannot be read.
std::vector<fs::directory_entry> ConfEntries(const Path& folder, std::error_code& error) {
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (EqualIgnoringCase(PathText(entry->path().extension()), u".conf")) entries.push_back(*entry);
  }
  return entries;
}

}  // namespace

std::vector<Path> ListConfFiles(const Path& folder, std::error_code& error) {
  std::vector<Path> names;
  for (const fs::directory_entry& entry : ConfEntries(folder, error)) {
    std::error_code unreadable;
    if (entry.is_regular_file(unreadable)) names.push_back(entry.path().filename());
  }
  return names;
}

std::vector<Path> ListConfFiles(const Path& folder) {
  std::error_code unreadable;  // what cannot be read has nothing to offer
  return ListConfFiles(folder, unreadable);
}

bool HasConfEntry(const Path& folder) {
  std::error_code unreadable;
  return !ConfEntries(folder, unreadable).empty();
}

}  // namespace quenmar
