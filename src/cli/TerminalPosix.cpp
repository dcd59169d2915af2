#include <unistd.h>

#include "cli/Terminal.h"

namespace quenmar {

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool StandardInputIsTerminal() { return ::isatty(STDIN_FILENO) == 1; }

bool StandardOutputShowsColours() { return ::isatty(STDOUT_FILENO) == 1; }

TerminalEncoding::TerminalEncoding() = default;
TerminalEncoding::~TerminalEncoding() = default;

}  // namespace quenmar
