#pragma once

#include <string>

namespace quenmar {

/// The two versions of one configuration file, as bytes.
struct SampleFiles {
  std::string distribution;
  std::string server;
};

/// Makes up a pair of files of about `settings` settings each, always the same for the same number:
/// one setting in twenty is in only one of them, a third of the values differ, a blank line and a
/// comment line come before nearly every setting, here and there a series entry; lines end with
/// CR LF.
[[nodiscard]] SampleFiles MakeSampleFiles(int settings);

}  // namespace quenmar
