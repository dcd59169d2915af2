#include <QAbstractItemView>
#include <QCompleter>
#include <QDir>
#include <QStringListModel>
#include <QUrl>
#include <array>

#include "app/MainFixture.h"

namespace quenmar {
namespace {

const QStringList kSelectDistribution(
    R"([0] Please, select the "conf-dist" or "conf-tmpl" inside your SVN root folder.)");
const QStringList kSelectServer("[0] Please, select your \"conf\" folder inside your Server Root.");

}  // namespace

class FoldersTest : public MainFixture {
  Q_OBJECT

  /// Gives a box a folder. @return what is said to it.
  QStringList Set(FolderBox* box, const QString& folder) {
    box->SetFolder(folder);
    return messages_.Take();
  }
  /// Leaves a folder box, by default for the next control.
  void Leave(FolderBox* box, Qt::FocusReason reason = Qt::TabFocusReason) {
    QFocusEvent leaving(QEvent::FocusOut, reason);
    QApplication::sendEvent(box, &leaving);
    QCoreApplication::sendPostedEvents();
  }
  /// Comes back to the window from another program.
  void ComeBack() {
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(window_.get(), &back);
    QCoreApplication::processEvents();
  }

 private slots:
  void FoldersAreJudgedOnceTheyAreComplete() {
    Open();
    QVERIFY(!Enabled() && Files()->count() == 0);
    QTest::keyClicks(From(), Folder("empty"));
    QCOMPARE(messages_.Take(), QStringList());
    QTest::keyClick(From(), Qt::Key_Return);
    QCOMPARE(messages_.Take(), kSelectDistribution);

    // Completions and other programs take the focus in the middle of typing; a control ends it.
    From()->setText(Folder("missing"));
    for (const Qt::FocusReason reason :
         {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::TabFocusReason}) {
      Files()->setFocus(Qt::PopupFocusReason);  // a refused box has it
      Leave(From(), reason);
      QCOMPARE(messages_.Take().size(), reason == Qt::TabFocusReason ? 1 : 0);
    }

    QCOMPARE(Set(From(), Folder("dist") + QDir::separator()), QStringList());
    QCOMPARE((QSet{Files()->itemText(0), Files()->itemText(1)}),
             (QSet<QString>{"NEW.CONF", "a.conf"}));
    QVERIFY(!Enabled() && Files()->currentIndex() == -1);
    QCOMPARE(Set(To(), Folder("empty")), kSelectServer);
    QVERIFY(Set(To(), Folder("conf")).isEmpty() && Enabled());
    // Only a folder matches: it makes a candidate, but there is nothing to list.
    std::filesystem::create_directory(*scratch_ / "empty/x.conf");
    QCOMPARE(Set(From(), Folder("empty")),
             QStringList("[0] The SVN Folder is wrong, there are not .conf files in the path: " +
                         Folder("empty") + QDir::separator() + "*.conf"));
    QVERIFY(!Enabled());
    // A text that is still being typed is judged before a command acts on it.
    QVERIFY(Set(From(), Folder("dist")).isEmpty() && Enabled());
    From()->setText(Folder("missing"));
    Get<QPushButton>("Command3")->click();
    QCOMPARE(messages_.Take(), kSelectDistribution);
  }

  void EnterJudgesTheSameTextAgain() {
    Open(Main::Folders{"  " + Folder("dist") + "\t", Folder("conf")});
    QCOMPARE(From()->text(), Folder("dist"));
    WriteFile(*scratch_ / "dist/later.conf", "");
    Leave(From());
    QCOMPARE(Files()->count(), 2);
    QTest::keyClick(From(), Qt::Key_Return);
    QCOMPARE(Files()->count(), 3);
    From()->setText(" " + Folder("missing") + " ");
    for (int i = 0; i < 2; ++i) {
      QTest::keyClick(From(), Qt::Key_Return);
      QCOMPARE(messages_.Take(), kSelectDistribution);
      QCOMPARE(From()->text(), Folder("missing"));
    }
  }

  void ChoosingACompletionIsNotYetTheFolder() {
    Open();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    From()->setFocus();
    QAbstractItemView* const offered = From()->completer()->popup();
    From()->completer()->setModel(new QStringListModel({Folder("empty")}, From()));
    QTest::keyClicks(From(), Folder("emp"));
    QTRY_VERIFY(offered->isVisible());
    QTest::keyClick(offered, Qt::Key_Down);
    QTest::keyClick(offered, Qt::Key_Return);
    QCOMPARE(From()->text(), Folder("empty"));
    QCOMPARE(messages_.Take(), QStringList());
    QTest::keyClick(From(), Qt::Key_Return);
    QCOMPARE(messages_.Take(), kSelectDistribution);
  }

  void ARefusedFolderKeepsTheFocus() {
    pick_ = [this](auto...) { return Folder("empty"); };
    for (const bool from : {true, false}) {
      OpenOnFolders();
      FolderBox* const box = from ? From() : To();
      const std::array<std::function<void()>, 4> ways = {
          [&] { QTest::keyClick(box, Qt::Key_Return); }, [&] { Leave(box); },
          [&] { Get<QPushButton>(from ? "Command1" : "Command2")->click(); },
          [&] { Drop(box, QUrl::fromLocalFile(Folder("empty")).toEncoded()); }};
      for (const auto& way : ways) {
        box->SetFolder(Folder(from ? "dist" : "conf"));
        QVERIFY(Enabled());
        box->setText(Folder("missing"));
        Get<QPushButton>("Command5")->setFocus();
        way();
        QVERIFY(!messages_.Take().isEmpty() && !Enabled());
        QCOMPARE(window_->focusWidget(), box);
      }
    }
  }

  void ComingBackReadsTheFoldersAgain() {
    OpenOnFolders("a.conf");
    WriteFile(*scratch_ / "dist/later.conf", "");
    PressAndClose("Command3", [&](QWidget*) {
      ComeBack();
      QCOMPARE(Files()->count(), 2);  // not under an open window
    });
    ComeBack();
    QCOMPARE(Files()->count(), 3);
    QCOMPARE(Files()->currentText(), QString("a.conf"));

    std::filesystem::rename(*scratch_ / "conf", *scratch_ / "away");
    ComeBack();
    QVERIFY(!Enabled());
    ComeBack();
    QCOMPARE(messages_.Take(), kSelectServer);
    std::filesystem::rename(*scratch_ / "away", *scratch_ / "conf");
    ComeBack();
    // What is still being typed waits.
    From()->setText(Folder("missing"));
    ComeBack();
    QVERIFY(Enabled() && messages_.Take().isEmpty());
  }

  void TheSameFolderTwiceIsRefusedFromBothSides() {
    OpenOnFolders();
    QCOMPARE(Set(To(), Folder("dist")), QStringList("[0] Please, select a diferent folder."));
    QVERIFY(!Enabled());
    QVERIFY(Set(To(), Folder("conf")).isEmpty() && Enabled());
    QCOMPARE(Set(From(), Folder("dist") + "/../conf"),  // also by another name of it
             QStringList("[0] Please, don't select the same folder."));
    QVERIFY(!Enabled() && Files()->count() == 0);
    QVERIFY(Set(To(), Folder("dist")).isEmpty() && Enabled());  // swapped folders put right
    QCOMPARE(Files()->count(), 1);
  }

  void FoldersArePickedDroppedAndStored() {
    OpenOnFolders();
    QVERIFY(LoadOptions(*registry_).svnPath.empty());
    QStringList calls;
    pick_ = [&](QWidget* owner, const QString& title, const QString& folder) {
      Leave(From());  // a typed folder is judged behind the picker
      calls << owner->objectName() + "|" + title + "|" + folder << messages_.Take();
      return QString();
    };
    From()->setText(Folder("missing"));
    Click("Command2");
    QCOMPARE(calls, QStringList("Main|Server Conf:|" + Folder("conf")));
    QCOMPARE(messages_.Take(), kSelectDistribution);
    pick_ = [this](auto...) { return Folder("empty"); };
    Click("Command2");
    QCOMPARE(messages_.Take(), kSelectServer);
    Drop(From(), QUrl::fromLocalFile(Folder("dist")).toEncoded());
    QCOMPARE(From()->text(), Folder("dist"));
    const Options stored = LoadOptions(*registry_);
    QCOMPARE(ToQString(stored.serverPath), Folder("empty"));
    QCOMPARE(ToQString(stored.svnPath), Folder("dist"));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::FoldersTest)
#include "FoldersTest.moc"
