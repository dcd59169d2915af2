#include "cli/OldVersions.h"

#include <algorithm>
#include <ostream>

#include "cli/Commands.h"
#include "cli/Printable.h"
#include "text/Charset.h"

namespace quenmar {

std::optional<Path> OldFileIn(const std::optional<Path>& base, const Path& file) {
  return base ? std::optional(FileIn(*base, file)) : std::nullopt;
}

void RequireOneOf(const std::vector<Path>& files, const Path& base) {
  const auto isMissing = [&base](const Path& file) { return IsMissing(base / file); };
  if (!std::all_of(files.begin(), files.end(), isMissing)) return;
  throw CommandError(
      ToUtf8(PathText(base) + (files.size() == 1 ? u" has no " + PathText(files.front())
                                                 : u" has none of the distribution's files")));
}

void ReportUnknown(const std::vector<Path>& files, const std::optional<Path>& base,
                   std::ostream& err) {
  if (files.empty()) return;
  const std::string first = Printable(PathText(files.front()));
  const std::string count = std::to_string(files.size()) + " files";
  const bool one = files.size() == 1;
  err << "quenmarctl: ";
  if (base) {
    err << Printable(PathText(*base)) << (one ? " has no " : " lacks " + count + ", such as ")
        << first << '\n';
  } else {
    err << "--take-defaults: the old version of " << (one ? first : count)
        << " is not known: " << kOldUnknown << '\n';
  }
}

}  // namespace quenmar
