/// What the command line asks for.
#pragma once

#include <optional>

#include "app/MainWindow.h"
#include "files/Files.h"

namespace quenmar {

struct Arguments {
  /// The registry file to use instead of the system's place.
  std::optional<Path> registry;
  std::optional<Main::Folders> folders;

  /// Parses the command line. For --help, --version, unknown arguments and a missing display it
  /// prints a message and ends the program. Call it before the application object is created, which
  /// needs a display.
  [[nodiscard]] static Arguments Parse(int argc, char** argv);
};

}  // namespace quenmar
