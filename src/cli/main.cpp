#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <vector>

#include "cli/Console.h"
#include "cli/Terminal.h"

namespace {

/// @param leftovers see `quenmar::ConsoleStreams`
int Run(int argc, char** argv, std::vector<std::shared_ptr<const void>>& leftovers) {
  const quenmar::TerminalEncoding encoding;
  const char* const noColor = std::getenv("NO_COLOR");
  const bool colours =
      (noColor == nullptr || *noColor == '\0') && quenmar::StandardOutputShowsColours();
  const quenmar::ConsoleStreams streams{
      std::cin, std::cout, std::cerr, quenmar::StandardInputIsTerminal(), colours, &leftovers};
  return quenmar::RunConsole(quenmar::CommandLineArguments(argc, argv), streams);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::shared_ptr<const void>> leftovers;
  const int status = Run(argc, argv, leftovers);
  // Ends at once, without destructors: the system takes back the memory of large trees faster than
  // they are taken down. What they would have done otherwise is to write out the streams.
  std::cout.flush();
  std::cerr.flush();
  (void)std::fflush(nullptr);  // a failure was reported when it was written
  std::_Exit(status);
}
