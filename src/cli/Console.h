/// The console program, apart from the process around it, so that tests can run it.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace quenmar {

/// The surroundings of one run.
struct ConsoleStreams {
  std::istream& in;   ///< answers to questions
  std::ostream& out;  ///< results; UTF-8, but for files and XML text, which keep their own bytes
  std::ostream& err;  ///< questions and messages, UTF-8
  bool interactive = false;  ///< `in` is a terminal
  bool colours = false;      ///< `out` is a terminal that shows colours
  /// Receives the trees of a command, if not null: a process that ends next need not spend time on
  /// freeing them.
  std::vector<std::shared_ptr<const void>>* leftovers = nullptr;
};

/// Exit statuses, as `diff` has them.
enum ExitStatus : int { kNothingToDo = 0, kDifferences = 1, kFailure = 2 };

/// Runs `quenmarctl` with the arguments behind the program's name, as UTF-8.
/// @return the exit status.
int RunConsole(const std::vector<std::string>& arguments, const ConsoleStreams& streams);

}  // namespace quenmar
