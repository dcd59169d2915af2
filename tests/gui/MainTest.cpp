#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QStringListModel>
#include <QTableView>
#include <QtTest>
#include <array>
#include <functional>
#include <memory>

#include "ScratchFolder.h"
#include "Trees.h"
#include "app/Main.h"
#include "gui/GuiMessages.h"
#include "gui/PrivateState.h"
#include "registry/FileRegistry.h"
#include "widgets/FolderBox.h"

namespace quenmar {
namespace {

const QString kSelectDistribution =
    R"([0] Please, select the "conf-dist" or "conf-tmpl" inside your SVN root folder.)";
const QString kSelectServer = R"([0] Please, select your "conf" folder inside your Server Root.)";
const QString kSelectFile = "[0] Select a config file from the list.";

}  // namespace

class MainTest : public QObject {
  Q_OBJECT

 private slots:
  void init();
  void StartsWithoutStoredFoldersInSilence();
  void FoldersAreJudgedOnceTheyAreComplete();
  void EnterJudgesTheSameTextAgain();
  void ChoosingACompletionIsNotYetTheFolder();
  void ARefusedFolderKeepsTheFocus();
  void TypedFoldersAreJudgedBehindThePicker();
  void ComingBackReadsTheFoldersAgain();
  void TheSameFolderTwiceIsRefusedFromBothSides();
  void FoldersArePickedDroppedAndStored();
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

 private:
  void Open(const std::optional<Main::Folders>& folders = {});
  void OpenOnFolders() { Open(Main::Folders{Folder("dist"), Folder("conf")}); }
  QString Folder(const char* name) { return ToQString(PathText(scratch_->Folder() / name)); }
  void Choose(const QString& file) { Get<QComboBox>("ConfFiles")->setCurrentText(file); }
  /// Presses a command and closes the window that it opens, whose title is returned.
  /// @param look gets that window before it closes
  QString PressAndClose(const char* button, const std::function<void(QWidget*)>& look = {});
  /// Presses a command in a running application. @return whether that ended the application, and
  /// with status 0.
  bool PressEnds(const char* button);
  /// Comes back to the window from another program.
  void ComeBack() {
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(window_.get(), &back);
    QCoreApplication::processEvents();
  }
  /// Leaves a folder box for the next control.
  void Leave(FolderBox* box) {
    QFocusEvent leaving(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(box, &leaving);
    QCoreApplication::sendPostedEvents();
  }
  void Drop(FolderBox* box, const QByteArray& url) {
    QMimeData data;
    data.setData("text/uri-list", url);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(box, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    const QString before = box->text();
    QApplication::sendEvent(box, &drop);
    QCOMPARE(box->text(), before);  // the other program comes first
    QCoreApplication::sendPostedEvents();
  }
  bool Enabled() {
    return Get<QPushButton>("Command3")->isEnabled() && Get<QPushButton>("Command5")->isEnabled();
  }

  template <class Widget>
  Widget* Get(const char* name) {
    return window_->findChild<Widget*>(name);
  }

  PrivateState state_;
  std::unique_ptr<ScratchFolder> scratch_;
  std::unique_ptr<FileRegistry> registry_;
  Language language_;
  GuiMessages messages_;
  QString picked_;
  std::function<void()> whilePicking_;
  QStringList pickerCalls_;
  std::unique_ptr<Main> window_;
};

void MainTest::init() {
  window_.reset();
  scratch_ = std::make_unique<ScratchFolder>();
  for (const char* name : {"dist", "conf", "empty"}) {
    std::filesystem::create_directory(*scratch_ / name);
  }
  WriteFile(*scratch_ / "dist/a.conf", "a: 1\r\nnpc: x\r\n");
  WriteFile(*scratch_ / "dist/NEW.CONF", "n: 1\r\n");
  WriteFile(*scratch_ / "conf/a.conf", "a: 2\r\n");
  registry_ = std::make_unique<FileRegistry>(*scratch_ / "options.reg");
  language_ = Language();
  messages_.Take();
  pickerCalls_.clear();
  picked_.clear();
  whilePicking_ = {};
}

void MainTest::Open(const std::optional<Main::Folders>& folders) {
  window_ = std::make_unique<Main>(
      *registry_, language_, messages_,
      [this](QWidget* owner, const QString& title, const QString& folder) {
        pickerCalls_ << owner->objectName() + "|" + title + "|" + folder;
        if (whilePicking_) whilePicking_();
        return picked_;
      },
      folders);
  window_->show();
}

QString MainTest::PressAndClose(const char* button, const std::function<void(QWidget*)>& look) {
  QString title;
  QTimer poll;
  connect(&poll, &QTimer::timeout, this, [&title, &look] {
    QWidget* const window = QApplication::activeModalWidget();
    if (window == nullptr) return;
    title = window->windowTitle();
    if (look) look(window);
    window->close();
  });
  poll.start(0);
  QTest::mouseClick(Get<QPushButton>(button), Qt::LeftButton);
  return title;
}

bool MainTest::PressEnds(const char* button) {
  constexpr int kStillRunning = 77;
  QTimer limit;
  connect(&limit, &QTimer::timeout, this, [] { QCoreApplication::exit(kStillRunning); });
  limit.start(5000);
  QTimer::singleShot(0, window_.get(), [this, button] { Get<QPushButton>(button)->click(); });
  return QApplication::exec() == 0;
}

void MainTest::StartsWithoutStoredFoldersInSilence() {
  Open();
  QCOMPARE(messages_.Take(), QStringList());
  QVERIFY(!Enabled());
  QCOMPARE(Get<QComboBox>("ConfFiles")->count(), 0);
}

void MainTest::FoldersAreJudgedOnceTheyAreComplete() {
  Open();
  auto* const from = Get<FolderBox>("txt_FileFrom");
  QTest::keyClicks(from, Folder("empty"));
  QCOMPARE(messages_.Take(), QStringList());
  QTest::keyClick(from, Qt::Key_Return);
  QCOMPARE(messages_.Take(), QStringList(kSelectDistribution));

  // Completions and other programs take the focus in the middle of typing; another control ends it.
  from->setText(Folder("missing"));
  for (const auto& [reason, complete] :
       {std::pair(Qt::PopupFocusReason, false), std::pair(Qt::ActiveWindowFocusReason, false),
        std::pair(Qt::TabFocusReason, true)}) {
    QFocusEvent leaving(QEvent::FocusOut, reason);
    QApplication::sendEvent(from, &leaving);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(messages_.Take().size(), complete ? 1 : 0);
  }

  from->SetFolder(Folder("dist") + QDir::separator());
  QCOMPARE(messages_.Take(), QStringList());
  auto* const files = Get<QComboBox>("ConfFiles");
  QStringList names = {files->itemText(0), files->itemText(1)};
  names.sort();
  QCOMPARE(names, QStringList({"NEW.CONF", "a.conf"}));
  QCOMPARE(files->currentIndex(), -1);
  QVERIFY(!Enabled());
  WriteFile(*scratch_ / "dist/later.conf", "");
  from->SetFolder(from->text());  // picked again: it is read again
  QCOMPARE(files->count(), 3);

  auto* const to = Get<FolderBox>("txt_FileTo");
  to->SetFolder(Folder("empty"));
  QCOMPARE(messages_.Take(), QStringList(kSelectServer));
  to->SetFolder(Folder("conf"));
  QVERIFY(Enabled());

  // Only a folder matches: it makes a candidate, but there is nothing to list.
  std::filesystem::create_directory(*scratch_ / "empty/x.conf");
  from->SetFolder(Folder("empty"));
  QCOMPARE(messages_.Take(),
           QStringList("[0] The SVN Folder is wrong, there are not .conf files in the path: " +
                       Folder("empty") + QDir::separator() + "*.conf"));
  QVERIFY(!Enabled());

  // A text that is still being typed is judged before a command acts on it.
  from->SetFolder(Folder("dist"));
  QVERIFY(Enabled());
  from->setText(Folder("missing"));
  Get<QPushButton>("Command3")->click();
  QCOMPARE(messages_.Take(), QStringList(kSelectDistribution));
}

void MainTest::EnterJudgesTheSameTextAgain() {
  Open(Main::Folders{"  " + Folder("dist") + "\t", Folder("conf")});
  auto* const from = Get<FolderBox>("txt_FileFrom");
  QCOMPARE(from->text(), Folder("dist"));
  Choose("a.conf");
  WriteFile(*scratch_ / "dist/later.conf", "");
  Leave(from);
  QCOMPARE(Get<QComboBox>("ConfFiles")->count(), 2);
  QTest::keyClick(from, Qt::Key_Return);
  QCOMPARE(Get<QComboBox>("ConfFiles")->count(), 3);
  QCOMPARE(Get<QComboBox>("ConfFiles")->currentText(), QString("a.conf"));
  from->setText(" " + Folder("missing") + " ");
  for (int i = 0; i < 2; ++i) {
    QTest::keyClick(from, Qt::Key_Return);
    QCOMPARE(messages_.Take(), QStringList(kSelectDistribution));
    QCOMPARE(from->text(), Folder("missing"));
  }
}

void MainTest::ChoosingACompletionIsNotYetTheFolder() {
  Open();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  auto* const from = Get<FolderBox>("txt_FileFrom");
  from->setFocus();
  QAbstractItemView* const offered = from->completer()->popup();
  from->completer()->setModel(new QStringListModel({Folder("empty")}, from));
  QTest::keyClicks(from, Folder("emp"));
  QTRY_VERIFY(offered->isVisible());
  QTest::keyClick(offered, Qt::Key_Down);
  QTest::keyClick(offered, Qt::Key_Return);
  QCOMPARE(from->text(), Folder("empty"));
  QCOMPARE(messages_.Take(), QStringList());
  QTest::keyClick(from, Qt::Key_Return);
  QCOMPARE(messages_.Take(), QStringList(kSelectDistribution));
}

void MainTest::ARefusedFolderKeepsTheFocus() {
  for (const char* const name : {"txt_FileFrom", "txt_FileTo"}) {
    const char* const browse = name == std::string("txt_FileFrom") ? "Command1" : "Command2";
    OpenOnFolders();
    auto* const box = Get<FolderBox>(name);
    picked_ = Folder("empty");
    const std::array<std::function<void()>, 4> ways = {
        [&] { QTest::keyClick(box, Qt::Key_Return); }, [&] { Leave(box); },
        [&] { Get<QPushButton>(browse)->click(); },
        [&] { Drop(box, QUrl::fromLocalFile(Folder("empty")).toEncoded()); }};
    for (const auto& way : ways) {
      box->SetFolder(Folder(box == Get<FolderBox>("txt_FileTo") ? "conf" : "dist"));
      QVERIFY(Enabled());
      box->setText(Folder("missing"));
      Get<QPushButton>("Command5")->setFocus();
      way();
      QVERIFY(!messages_.Take().isEmpty() && !Enabled());
      QCOMPARE(window_->focusWidget(), box);
    }
  }
}

void MainTest::TypedFoldersAreJudgedBehindThePicker() {
  OpenOnFolders();
  auto* const from = Get<FolderBox>("txt_FileFrom");
  from->setText(Folder("missing"));
  whilePicking_ = [this, from] {
    Leave(from);
    QCOMPARE(messages_.Take(), QStringList());
  };
  Get<QPushButton>("Command1")->click();  // cancelled
  QCOMPARE(messages_.Take(), QStringList(kSelectDistribution));
}

void MainTest::ComingBackReadsTheFoldersAgain() {
  OpenOnFolders();
  auto* const files = Get<QComboBox>("ConfFiles");
  Choose("a.conf");
  WriteFile(*scratch_ / "dist/later.conf", "");
  PressAndClose("Command3", [&](QWidget*) {
    ComeBack();
    QCOMPARE(files->count(), 2);  // not under an open window
  });
  ComeBack();
  QCOMPARE(files->count(), 3);
  QCOMPARE(files->currentText(), QString("a.conf"));

  std::filesystem::rename(*scratch_ / "conf", *scratch_ / "away");
  ComeBack();
  QVERIFY(!Enabled());
  QCOMPARE(messages_.Take(), QStringList(kSelectServer));
  ComeBack();
  std::filesystem::rename(*scratch_ / "away", *scratch_ / "conf");
  ComeBack();
  QVERIFY(Enabled());
  // What is still being typed waits.
  Get<FolderBox>("txt_FileFrom")->setText(Folder("missing"));
  ComeBack();
  QVERIFY(Enabled());
  QCOMPARE(messages_.Take(), QStringList());
}

void MainTest::TheSameFolderTwiceIsRefusedFromBothSides() {
  OpenOnFolders();
  Get<FolderBox>("txt_FileTo")->SetFolder(Folder("dist"));
  QCOMPARE(messages_.Take(), QStringList("[0] Please, select a diferent folder."));
  QVERIFY(!Enabled());
  Get<FolderBox>("txt_FileTo")->SetFolder(Folder("conf"));
  QVERIFY(Enabled());
  // Also by another name of it.
  Get<FolderBox>("txt_FileFrom")->SetFolder(Folder("dist") + "/../conf");
  QCOMPARE(messages_.Take(), QStringList("[0] Please, don't select the same folder."));
  QVERIFY(!Enabled());
  QCOMPARE(Get<QComboBox>("ConfFiles")->count(), 0);
  // Swapped folders put right.
  Get<FolderBox>("txt_FileTo")->SetFolder(Folder("dist"));
  QVERIFY(Enabled());
  QCOMPARE(Get<QComboBox>("ConfFiles")->count(), 1);
}

void MainTest::FoldersArePickedDroppedAndStored() {
  OpenOnFolders();
  QVERIFY(LoadOptions(*registry_).svnPath.empty());
  picked_ = QString();
  QTest::mouseClick(Get<QPushButton>("Command2"), Qt::LeftButton);
  QCOMPARE(pickerCalls_, QStringList("Main|Server Conf:|" + Folder("conf")));
  picked_ = Folder("empty");
  QTest::mouseClick(Get<QPushButton>("Command2"), Qt::LeftButton);
  QCOMPARE(messages_.Take(), QStringList(kSelectServer));

  auto* const from = Get<FolderBox>("txt_FileFrom");
  from->clear();
  Drop(from, QUrl::fromLocalFile(Folder("dist")).toEncoded());
  QCOMPARE(from->text(), Folder("dist"));

  const Options stored = LoadOptions(*registry_);
  QCOMPARE(ToQString(stored.serverPath), Folder("empty"));
  QCOMPARE(ToQString(stored.svnPath), Folder("dist"));
}

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
  messages_.Answer({Button::kYes});
  QCOMPARE(PressAndClose("Command5").left(24), QString("Check Changes - NEW.CONF"));
  QCOMPARE(ReadFile(*scratch_ / "conf/NEW.CONF"), std::string("n: 1\r\n"));
}

void MainTest::CommandsOpenTheirWindows() {
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
      ToQString(PathText(*scratch_ / "conf/a.conf"));
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
