#pragma once

#include <string>

namespace quenmar {

/// The two versions of one configuration file, as bytes.
struct SampleFiles {
  std::string distribution;
  std::string server;
};

/// Makes up a pair of files of about `settings` settings each, always the same for the same number:
/// one setting in twenty stands in only one of them, a third of the values differ, every ten
/// settings a comment block, here and there a series entry; lines end with CR LF.
[[nodiscard]] SampleFiles MakeSampleFiles(int settings);

}  // namespace quenmar
