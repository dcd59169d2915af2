/// What the command line asks for.
#pragma once

#include <optional>

#include "app/MainWindow.h"
#include "files/Files.h"

namespace quenmar {

struct Arguments {
  /// Takes the place of the system's own options store.
  std::optional<Path> registry;
  std::optional<Main::Folders> folders;

  /// Ends the program itself for --help, --version, arguments that it does not know, and where
  /// there is no display. To be called before there is an application object: none of this needs a
  /// display.
  [[nodiscard]] static Arguments Parse(int argc, char** argv);
};

}  // namespace quenmar
