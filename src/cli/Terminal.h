/// What the console program asks of the system around it; one source file per platform.
#pragma once

#include <string>
#include <vector>

namespace quenmar {

/// @return the arguments behind the program's name as UTF-8.
[[nodiscard]] std::vector<std::string> CommandLineArguments(int argc, char** argv);

/// @return whether standard input is a terminal.
[[nodiscard]] bool StandardInputIsTerminal();

/// @return whether standard output is a terminal that understands colour sequences.
[[nodiscard]] bool StandardOutputShowsColours();

/// Prepares the standard streams for their lifetime: bytes pass unchanged, and a console reads them
/// as UTF-8. Restores the console when destroyed and when the user breaks the program off.
class TerminalEncoding {
 public:
  TerminalEncoding();
  TerminalEncoding(const TerminalEncoding&) = delete;
  TerminalEncoding& operator=(const TerminalEncoding&) = delete;
  ~TerminalEncoding();
};

}  // namespace quenmar
