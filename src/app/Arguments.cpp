#include "app/Arguments.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdlib>

#include "app/ShowStartFailure.h"
#include "widgets/QtText.h"

namespace quenmar {

namespace {

[[noreturn]] void Refuse(const QString& reason) {
  ShowStartFailure(reason);
  std::exit(2);
}

[[noreturn]] void RefuseArguments(const QString& reason) {
  Refuse(reason + "\nTry 'quenmar --help'.");
}

/// Options that Qt takes for itself later on; session managers and theme authors rely on them.
void AddQtOptions(QCommandLineParser& parser) {
  // As Qt's are written, with one dash before a word.
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  for (const char* const name :
       {"display", "platform", "qwindowgeometry", "session", "style", "stylesheet"}) {
    QCommandLineOption option(name, {}, "VALUE");
    option.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(option);
  }
}

/// @return the command line; names in it that are no valid text keep their bytes.
QStringList Words([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#ifdef Q_OS_LINUX
  QStringList words;
  for (int i = 0; i < argc; ++i) words << ToQString(PathText(argv[i]));
  return words;
#else
  return QCoreApplication::arguments();
#endif
}

#ifdef Q_OS_LINUX
/// Without any display Qt would abort the program: a core file and no hint.
void WantDisplay(const QCommandLineParser& parser) {
  for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    if (!qEnvironmentVariableIsEmpty(name)) return;
  }
  if (parser.isSet("display") || parser.isSet("platform")) return;
  Refuse(
      "There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set.\n"
      "'quenmarctl' does the job on the console.");
}
#endif

}  // namespace

Arguments Arguments::Parse(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Compares and edits the configuration files of a game server's distribution and those of the "
      "running server.\nThe folders given here are not stored.");
  const QCommandLineOption help({"h", "help"}, "Print this help message and exit.");
  const QCommandLineOption version("version", "Display program version information and exit.");
  const QCommandLineOption registry("registry", "Registry file to take the options from.", "FILE");
  parser.addOptions({help, version, registry});
  AddQtOptions(parser);
  parser.addPositionalArgument("DIST_DIR", "Folder of the distribution's files.", "[DIST_DIR");
  parser.addPositionalArgument("SERVER_DIR", "Folder of the running server's files.",
                               "SERVER_DIR]");

  const bool understood = parser.parse(Words(argc, argv));
  if (parser.isSet(help)) parser.showHelp();
  if (parser.isSet(version)) parser.showVersion();
  if (!understood) RefuseArguments(parser.errorText());
  Arguments arguments;
  const QStringList folders = parser.positionalArguments();
  if (folders.size() == 2) {
    arguments.folders = Main::Folders{folders[0], folders[1]};
  } else if (!folders.isEmpty()) {
    RefuseArguments("Give both folders or none.");
  }
  if (parser.isSet(registry)) {
    arguments.registry = PathFromText(FromQString(parser.value(registry)));
  }
#ifdef Q_OS_LINUX
  WantDisplay(parser);
#endif
  return arguments;
}

}  // namespace quenmar
