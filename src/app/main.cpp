#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "app/Arguments.h"
#include "app/MainWindow.h"
#include "app/ShowStartFailure.h"
#include "registry/OpenRegistry.h"
#include "widgets/QtMessageBoxes.h"
#include "widgets/QtText.h"

namespace {

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 64, 128, 256}) {
    icon.addFile(QString(":/icons/%1x%1/apps/quenmar.png").arg(size));
  }
  return icon;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName("quenmar");
  QCoreApplication::setApplicationVersion(QUENMAR_VERSION);
  const auto arguments = quenmar::Arguments::Parse(argc, argv);
  const QApplication application(argc, argv);
  QGuiApplication::setDesktopFileName("quenmar");
  QGuiApplication::setWindowIcon(ProgramIcon());
  // The toolkit's own words, such as Yes and No, in the user's language; else they are English.
  QTranslator toolkit;
  if (toolkit.load(QLocale(), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&toolkit);
  }

  const auto registry = quenmar::OpenRegistry(arguments.registry);
  if (const quenmar::String reason = registry->ErrorText(); !reason.empty()) {
    quenmar::ShowStartFailure(quenmar::ToQString(reason));
  }
  const auto language = quenmar::Language::LoadLanguage(*registry);
  quenmar::QtMessageBoxes messages(
      quenmar::ToQString(language.Text(quenmar::Message::kWindowTitle)));
  quenmar::Main window(*registry, language, messages, quenmar::PlatformFolderPicker(),
                       arguments.folders);
  window.show();
  return QApplication::exec();
}
