#include <cstdlib>
#include <iostream>

#include "cli/Console.h"
#include "cli/Terminal.h"

int main(int argc, char** argv) {
  const quenmar::TerminalEncoding encoding;
  const char* const noColor = std::getenv("NO_COLOR");
  const bool colours =
      (noColor == nullptr || *noColor == '\0') && quenmar::StandardOutputShowsColours();
  const quenmar::ConsoleStreams streams{std::cin, std::cout, std::cerr,
                                        quenmar::StandardInputIsTerminal(), colours};
  return quenmar::RunConsole(quenmar::CommandLineArguments(argc, argv), streams);
}
