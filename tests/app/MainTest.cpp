#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTableView>
#include <QUrl>

#include "app/MainFixture.h"

namespace quenmar {
namespace {

const QString kSelectFile = "[0] Select a config file from the list.";

}  // namespace

class MainTest : public MainFixture {
  Q_OBJECT

 private slots:
  void SortIsStored();
  void CommandsNeedAFileThatBothFoldersHave();
  void CheckChangesCopiesWhatTheServerLacks();
  void CommandsOpenTheirWindows();
  void WindowsFitOnASmallScreen();
  void NamesKeepTheirBytes();
  void AFailedReadingOpensNothing();
  void SortOrdersTheSettingsOfTheServer();
  void BareLineFeedsAreRepairedOrEndTheApplication();
  void TooManyKindsOfSeriesOpenNoWindow();
  void CloseEndsTheApplication();
  void TabFollowsTheOrderOfUse();
  void CaptionsComeFromTheMessageTable();
};

void MainTest::SortIsStored() {
  Open();
  auto* const sort = Get<QCheckBox>("Check1");
  QVERIFY(!sort->isChecked());
  sort->click();
  QCOMPARE(LoadOptions(*registry_).sort, 1);
  Open();
  QVERIFY(Get<QCheckBox>("Check1")->isChecked());
}

void MainTest::CommandsNeedAFileThatBothFoldersHave() {
  OpenOnFolders();
  Get<QPushButton>("Command3")->click();
  Get<QPushButton>("Command5")->click();
  QCOMPARE(messages_.Take(), QStringList({kSelectFile, kSelectFile}));
  Choose("NEW.CONF");
  Get<QPushButton>("Command3")->click();
  QCOMPARE(messages_.Take(), QStringList("[0] The NEW.CONF file is not found in you game folder, "
                                         "please use Check Changes"));
}

void MainTest::CheckChangesCopiesWhatTheServerLacks() {
  OpenOnFolders();
  Choose("NEW.CONF");
  const QString question =
      "[36] The NEW.CONF file is a new config file, copy in your project config folder?";
  messages_.Answer({Button::kNo});
  Get<QPushButton>("Command5")->click();
  QCOMPARE(messages_.Take(), QStringList(question));
  QVERIFY(!std::filesystem::exists(*scratch_ / "conf/NEW.CONF"));
#ifndef Q_OS_WIN
  std::filesystem::create_symlink(*scratch_ / "nowhere/file", *scratch_ / "conf/NEW.CONF");
  messages_.Answer({Button::kYes});
  Get<QPushButton>("Command5")->click();
  QVERIFY(messages_.Take().last().startsWith("[0] Error: "));
  QVERIFY(QApplication::overrideCursor() == nullptr);
  std::filesystem::remove(*scratch_ / "conf/NEW.CONF");
#endif
  // What is begun from the distribution's file costs no copy of an earlier one.
  WriteFile(*scratch_ / "dist/NEW.CONF", "// x\r\nn: 1\r\n");
  WriteFile(*scratch_ / "conf/NEW.CONF.bak", "precious");
  messages_.Answer({Button::kYes, Button::kYes});
  const auto apply = [](QWidget* window) { window->findChild<QPushButton*>("cmdApply")->click(); };
  QCOMPARE(PressAndClose("Command5", apply).left(24), QString("Check Changes - NEW.CONF"));
  QCOMPARE(ReadFile(*scratch_ / "conf/NEW.CONF.bak"), std::string("precious"));
  QCOMPARE(ReadFile(*scratch_ / "conf/NEW.CONF"), std::string("n: 1\r\n"));
}

void MainTest::CommandsOpenTheirWindows() {
#ifndef Q_OS_WIN
  // A server's file that is the distribution's by a link must not be written.
  std::filesystem::rename(*scratch_ / "conf/a.conf", *scratch_ / "conf/kept");
  std::filesystem::create_symlink("../dist/a.conf", *scratch_ / "conf/a.conf");
  OpenOnFolders();
  Choose("a.conf");
  Get<QPushButton>("Command3")->click();
  QCOMPARE(messages_.Take(), QStringList("[0] Please, don't select the same folder."));
  std::filesystem::rename(*scratch_ / "conf/kept", *scratch_ / "conf/a.conf");
#endif
  OpenOnFolders();
  Choose("a.conf");
  QVERIFY(PressAndClose("Command3").startsWith("Editing a.conf"));
  QVERIFY(PressAndClose("Command5").startsWith("Check Changes - a.conf"));
  QVERIFY(QApplication::overrideCursor() == nullptr);
}

void MainTest::WindowsFitOnASmallScreen() {
  const QSize small(500, 340);  // 1024 x 768 at twice the size, less the frame
  OpenOnFolders();
  Choose("a.conf");
  window_->resize(small);
  QCOMPARE(window_->size(), small);
  PressAndClose("Command5", [small](QWidget* window) {
    window->resize(small);
    QCOMPARE(window->size(), small);
    QCoreApplication::processEvents();
    window->findChild<QLabel*>("lblCheckHint")->setText("A hint so long that it wraps, and again");
    QCoreApplication::processEvents();
    for (const char* const name : {"cmdMove0", "cmdSelectAll0", "cmdHelp0"}) {
      const auto* const button = window->findChild<QPushButton*>(name);
      QVERIFY2(button->height() >= button->sizeHint().height(), name);
    }
    const auto* const apply = window->findChild<QPushButton*>("cmdApply");
    QVERIFY(window->rect().contains(QRect(apply->mapTo(window, QPoint()), apply->size())));
  });
}

/// On systems whose names are bytes, these may be no text.
void MainTest::NamesKeepTheirBytes() {
#ifndef Q_OS_LINUX
  QSKIP("Names are text here.");
#endif
  const Path name("caf\xE9.conf");
  std::filesystem::create_directory(*scratch_ / "d\xE9");
  WriteFile(*scratch_ / "d\xE9" / name, "a: 1\r\n");
  WriteFile(*scratch_ / "conf" / name, "a: 2\r\n");
  OpenOnFolders();
  Drop(Get<FolderBox>("txt_FileFrom"), QUrl::fromLocalFile(Folder("d")).toEncoded() + "%E9");
  auto* const files = Get<QComboBox>("ConfFiles");
  QCOMPARE(files->count(), 1);
  files->setCurrentIndex(0);
  QCOMPARE(FromQString(files->currentText()), PathText(name));
  for (const char* const command : {"Command3", "Command5"}) {
    QVERIFY(PressAndClose(command).contains(files->currentText()));
  }
  std::filesystem::remove(*scratch_ / "conf" / name);
  messages_.Answer({Button::kYes});
  PressAndClose("Command5");
  QVERIFY(std::filesystem::exists(*scratch_ / "conf" / name));
}

void MainTest::AFailedReadingOpensNothing() {
  WriteFile(*scratch_ / "conf/a.conf", "a: 1\r\na: 2\r\n");
  OpenOnFolders();
  Choose("a.conf");
  messages_.Answer({Button::kNo, Button::kNo});
  Get<QPushButton>("Command3")->click();
  Get<QPushButton>("Command5")->click();
  QCOMPARE(messages_.Take().size(), 2);
  QVERIFY(messages_.Busy());
  std::filesystem::create_directory(*scratch_ / "conf/NEW.CONF");  // a folder in the file's place
  Choose("NEW.CONF");
  for (const char* const command : {"Command3", "Command5"}) {
    Get<QPushButton>(command)->click();
    const QStringList shown = messages_.Take();
    QCOMPARE(shown.size(), 1);
    QVERIFY2(shown.first().contains("Error"), qPrintable(shown.first()));
  }
  QVERIFY(QApplication::overrideCursor() == nullptr);
}

void MainTest::SortOrdersTheSettingsOfTheServer() {
  WriteFile(*scratch_ / "conf/a.conf", "b: 1\r\na: 2\r\nnpc: z\r\nnpc: y\r\n");
  OpenOnFolders();
  Choose("a.conf");
  QStringList names;
  const auto look = [&names](QWidget* window) {
    const auto* const cells = window->findChild<QTableView*>("xEDG")->model();
    names << cells->index(0, 0).data().toString() + cells->index(1, 0).data().toString();
    // Series are always sorted; what only the distribution has comes behind them.
    const auto* const entries = window->findChild<QListWidget*>("lstSeries0");
    for (int i = 0; i < entries->count(); ++i) names.last() += entries->item(i)->text();
  };
  PressAndClose("Command3", look);
  Get<QCheckBox>("Check1")->click();
  PressAndClose("Command3", look);
  QCOMPARE(names, QStringList({"bayzx", "abyzx"}));
}

void MainTest::BareLineFeedsAreRepairedOrEndTheApplication() {
  const QString question =
      "[36] This file contain LF as line ending, do you want to fix? (This tool is compatible with "
      "CR+LF)\r\n" +
      ToQString(PathText((*scratch_ / "conf" / "a.conf").make_preferred()));
  for (const char* const command : {"Command3", "Command5"}) {
    WriteFile(*scratch_ / "conf/a.conf", "a: 2\nb: 3\n");
    OpenOnFolders();
    Choose("a.conf");
    messages_.Answer({Button::kNo});
    QVERIFY(PressEnds(command));
    QCOMPARE(messages_.Take(), QStringList(question));
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QCOMPARE(ReadFile(*scratch_ / "conf/a.conf"), std::string("a: 2\nb: 3\n"));
    messages_.Answer({Button::kYes});
    QVERIFY(PressAndClose(command).contains("a.conf"));
    QCOMPARE(messages_.Take(), QStringList(question));
    QCOMPARE(ReadFile(*scratch_ / "conf/a.conf"), std::string("a: 2\r\nb: 3\r\n"));
  }
}

void MainTest::TooManyKindsOfSeriesOpenNoWindow() {
  std::string lines;
  String kinds;
  for (const char kind : std::string("abcdefghijk")) {
    kinds += String(u"{s") + static_cast<char16_t>(kind) + u"}";
    lines += std::string("s") + kind + ": of_" + kind + "\r\n";
  }
  registry_->RegWriteString(RegistryRoot::kLocalMachine, u"Software\\Quenmar\\Options", u"Series",
                            kinds);
  WriteFile(*scratch_ / "conf/a.conf", lines);
  OpenOnFolders();
  Choose("a.conf");
  const QStringList refusal("[16] Sorry, this tool only works with 10 series");
  QCOMPARE(PressAndClose("Command3"), QString());
  QCOMPARE(messages_.Take(), refusal);
  QVERIFY(PressEnds("Command5"));
  QCOMPARE(messages_.Take(), refusal);
  QVERIFY(QApplication::overrideCursor() == nullptr);
  QCOMPARE(ReadFile(*scratch_ / "conf/a.conf"), lines);
}

void MainTest::CloseEndsTheApplication() {
  Open();
  QVERIFY(PressEnds("Command4"));
}

void MainTest::TabFollowsTheOrderOfUse() {
  OpenOnFolders();
  QStringList order;
  for (const QWidget* control = Get<FolderBox>("txt_FileFrom");;
       control = control->nextInFocusChain()) {
    if (!control->objectName().isEmpty() && (control->focusPolicy() & Qt::TabFocus) != 0) {
      if (!order.isEmpty() && control->objectName() == order.first()) break;
      order << control->objectName();
    }
  }
  QCOMPARE(order, QStringList({"txt_FileFrom", "Command1", "txt_FileTo", "Command2", "ConfFiles",
                               "Command3", "Command5", "Command4", "Check1"}));
}

void MainTest::CaptionsComeFromTheMessageTable() {
  for (const auto& [name, text] : {std::pair(u"LNG9", u"Cerrar"), std::pair(u"LNG8", u"&A")}) {
    registry_->RegWriteString(RegistryRoot::kLocalMachine, u"Software\\Quenmar\\Language", name,
                              text);
  }
  language_ = Language::LoadLanguage(*registry_);
  Open();
  QCOMPARE(Get<QPushButton>("Command4")->text(), QString("Cerrar"));
  QCOMPARE(Get<QPushButton>("Command3")->text(), QString("&&A"));  // shown letter for letter
  QCOMPARE(Get<QCheckBox>("Check1")->text(), QString("Select a config file from the list."));
  QCOMPARE(window_->windowTitle(), QString("Talsk/Orvanth .conf Editor"));
}

}  // namespace quenmar

QTEST_MAIN(quenmar::MainTest)
#include "MainTest.moc"
