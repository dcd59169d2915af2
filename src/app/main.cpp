#include <QApplication>
#include <QCommandLineParser>
#include <iostream>

#include "app/Main.h"
#include "registry/OpenRegistry.h"
#include "text/Charset.h"
#include "widgets/QtMessageBoxes.h"
#include "widgets/QtText.h"

namespace {

struct Arguments {
  std::optional<quenmar::Path> registry;
  std::optional<quenmar::Main::Folders> folders;
};

/// Ends the program itself for --help, --version and words that it does not know.
Arguments Parse(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Compares and edits the configuration files of a game server's distribution and those of the "
      "running server.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption registry("registry", "Registry file to take the options from.", "FILE");
  parser.addOption(registry);
  parser.addPositionalArgument("DIST_DIR", "Folder of the distribution's files.", "[DIST_DIR");
  parser.addPositionalArgument("SERVER_DIR", "Folder of the running server's files.",
                               "SERVER_DIR]");
  parser.process(application);

  Arguments arguments;
  const QStringList folders = parser.positionalArguments();
  if (folders.size() == 2) {
    arguments.folders = quenmar::Main::Folders{folders[0], folders[1]};
  } else if (!folders.isEmpty()) {
    std::cerr << "quenmar: give both folders or none\n";
    std::exit(2);
  }
  if (parser.isSet(registry)) {
    arguments.registry = quenmar::PathFromText(quenmar::FromQString(parser.value(registry)));
  }
  return arguments;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setApplicationName("quenmar");
  QApplication::setApplicationVersion(QUENMAR_VERSION);
  const Arguments arguments = Parse(application);

  const auto registry = quenmar::OpenRegistry(arguments.registry);
  if (const quenmar::String trouble = registry->Trouble(); !trouble.empty()) {
    std::cerr << "quenmar: " << quenmar::ToUtf8(trouble) << '\n';
  }
  const auto language = quenmar::Language::LoadLanguage(*registry);
  quenmar::QtMessageBoxes messages(quenmar::ToQString(language.Text(quenmar::LNG1)));
  quenmar::Main window(*registry, language, messages, quenmar::PlatformFolderPicker(),
                       arguments.folders);
  window.show();
  return QApplication::exec();
}
