#include <QAbstractItemView>
#include <QCompleter>
#include <QDir>
#include <QStringListModel>
#include <QUrl>
#include <array>

#include "app/MainFixture.h"

namespace quenmar {
namespace {

const QString kSelectDistribution =
    R"([0] Please, select the "conf-dist" or "conf-tmpl" inside your SVN root folder.)";
const QString kSelectServer = R"([0] Please, select your "conf" folder inside your Server Root.)";

}  // namespace

class FoldersTest : public MainFixture {
  Q_OBJECT

 private slots:
  void StartsWithoutStoredFoldersInSilence();
  void FoldersAreJudgedOnceTheyAreComplete();
  void EnterJudgesTheSameTextAgain();
  void ChoosingACompletionIsNotYetTheFolder();
  void ARefusedFolderKeepsTheFocus();
  void TypedFoldersAreJudgedBehindThePicker();
  void ComingBackReadsTheFoldersAgain();
  void TheSameFolderTwiceIsRefusedFromBothSides();
  void FoldersArePickedDroppedAndStored();
};

void FoldersTest::StartsWithoutStoredFoldersInSilence() {
  Open();
  QCOMPARE(messages_.Take(), QStringList());
  QVERIFY(!Enabled());
  QCOMPARE(Get<QComboBox>("ConfFiles")->count(), 0);
}

void FoldersTest::FoldersAreJudgedOnceTheyAreComplete() {
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
    Get<QComboBox>("ConfFiles")->setFocus(Qt::PopupFocusReason);  // a refused box has it
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

void FoldersTest::EnterJudgesTheSameTextAgain() {
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

void FoldersTest::ChoosingACompletionIsNotYetTheFolder() {
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

void FoldersTest::ARefusedFolderKeepsTheFocus() {
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

void FoldersTest::TypedFoldersAreJudgedBehindThePicker() {
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

void FoldersTest::ComingBackReadsTheFoldersAgain() {
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

void FoldersTest::TheSameFolderTwiceIsRefusedFromBothSides() {
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

void FoldersTest::FoldersArePickedDroppedAndStored() {
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

}  // namespace quenmar

QTEST_MAIN(quenmar::FoldersTest)
#include "FoldersTest.moc"
