#include <QAbstractItemView>
#include <QCheckBox>
#include <QCompleter>
#include <QDir>
#include <QStringListModel>
#include <QUrl>

#include "app/MainFixture.h"

namespace quenmar {
namespace {

const QStringList kSelectDistribution(
    R"([0] Please, select the "conf-dist" or "conf-tmpl" inside your SVN root folder.)");
const QStringList kSelectServer("[0] Please, select your \"conf\" folder inside your Server Root.");

}  // namespace

class FoldersTest : public MainFixture {
  Q_OBJECT

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
  QByteArray Url(const char* folder) { return QUrl::fromLocalFile(Folder(folder)).toEncoded(); }
  /// Gives a box a folder. @return what is said to that, "+" if commands can be given or else "-",
  /// and the files to choose from.
  QString Judged(FolderBox* box, const char* folder) {
    box->SetFolder(Folder(folder));
    QStringList files;
    for (int i = 0; i < Files()->count(); ++i) files << Files()->itemText(i);
    files.sort();
    return messages_.Take().join("") + (Enabled() ? "+" : "-") + files.join(' ');
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
  }

  void FoldersAreJudgedTogether() {
    Open();
    QCOMPARE(Judged(From(), "dist/"), "-NEW.CONF a.conf");
    QCOMPARE(Judged(To(), "empty"), kSelectServer.first() + "-NEW.CONF a.conf");
    QCOMPARE(Judged(To(), "conf"), "+NEW.CONF a.conf");
    QCOMPARE(Files()->currentIndex(), -1);
    // Only a folder matches: it makes a candidate, but there is nothing to list.
    std::filesystem::create_directory(*scratch_ / "empty/x.conf");
    QCOMPARE(Judged(From(), "empty"),
             "[0] The SVN Folder is wrong, there are not .conf files in the path: " +
                 Folder("empty") + QDir::separator() + "*.conf-");
    QCOMPARE(Judged(From(), "dist"), "+NEW.CONF a.conf");
    QCOMPARE(Judged(To(), "dist"), "[0] Please, select a diferent folder.-NEW.CONF a.conf");
    QCOMPARE(Judged(To(), "conf"), "+NEW.CONF a.conf");
    // Also by another name of it.
    QCOMPARE(Judged(From(), "dist/../conf"), "[0] Please, don't select the same folder.-");
    QCOMPARE(Judged(To(), "dist"), "+a.conf");  // swapped folders put right
    QCOMPARE(Judged(To(), "conf"), "[0] Please, select a diferent folder.-a.conf");
    QCOMPARE(Judged(From(), "dist"), "+NEW.CONF a.conf");
    // A text that is still being typed is judged before a command acts on it.
    From()->setText(Folder("missing"));
    Get<QPushButton>("Command3")->click();
    QCOMPARE(messages_.Take(), kSelectDistribution);
  }

  void EnterJudgesTheSameTextAgain() {
    Open(Main::Folders{"  " + Folder("dist") + "\t", Folder("conf")});
    QCOMPARE(From()->text(), Folder("dist"));
    Write("dist/later.conf", "");
    Leave(From());
    QCOMPARE(Files()->count(), 2);
    QTest::keyClick(From(), Qt::Key_Return);
    QCOMPARE(Files()->count(), 3);
  }

  void ChoosingACompletionIsNotYetTheFolder() {
    Open();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    From()->setFocus();
    QAbstractItemView* const offered = From()->completer()->popup();
    From()->completer()->setModel(new QStringListModel({Folder("empty")}, From()));
    QTest::keyClicks(From(), Folder("Emp"));
    QTRY_VERIFY(offered->isVisible());
    QTest::keyClick(offered, Qt::Key_Down);
    QTest::keyClick(offered, Qt::Key_Return);
    QCOMPARE(From()->text(), Folder("empty"));
    QCOMPARE(messages_.Take(), QStringList());
    QTest::keyClick(From(), Qt::Key_Return);
    QCOMPARE(messages_.Take(), kSelectDistribution);
  }

  void AClickThatLeavesABoxCounts() {
    Open();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    From()->setFocus();
    From()->setText(Folder("missing"));
    auto* const box = Get<QCheckBox>("Check1");
    const QPoint place = box->mapTo(window_.get(), QPoint(8, box->height() / 2));
    QTest::mousePress(window_->windowHandle(), Qt::LeftButton, {}, place);
    QCOMPARE(messages_.Take(), QStringList());
    QTest::mouseRelease(window_->windowHandle(), Qt::LeftButton, {}, place);
    QTRY_VERIFY(box->isChecked());
    QCOMPARE(messages_.Take(), kSelectDistribution);
  }

  void ARefusedFolderKeepsTheFocus() {
    pick_ = [this](auto...) { return Folder("empty"); };
    for (const char* const button : {"Command1", "Command2"}) {
      OpenOnFolders();
      Get<QPushButton>("Command5")->setFocus();
      Get<QPushButton>(button)->click();
      QVERIFY(!messages_.Take().isEmpty() && !Enabled());
      QCOMPARE(window_->focusWidget(), qstrcmp(button, "Command1") == 0 ? From() : To());
    }
  }

  void ComingBackReadsTheFoldersAgain() {
    OpenOnFolders("a.conf");
    Write("dist/later.conf", "");
    PressAndClose("Command3", [&](QWidget*) {
      ComeBack();
      QCOMPARE(Files()->count(), 2);  // not under an open window
    });
    ComeBack();
    QCOMPARE(Files()->count(), 3);
    QCOMPARE(Files()->currentText(), "a.conf");

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

  void FoldersArePickedDroppedAndStored() {
    OpenOnFolders();
    QVERIFY(LoadOptions(*registry_).svnPath.empty());
    QString picked;
    pick_ = [&](QWidget* owner, const QString& title, const QString& folder) {
      Leave(From());  // a typed folder is judged behind the picker
      picked = owner->objectName() + "|" + title + "|" + folder + messages_.Take().join("");
      return QString();
    };
    From()->setText(Folder("missing"));
    Click("Command2");
    QCOMPARE(picked, "Main|Server Conf:|" + Folder("conf"));
    QCOMPARE(messages_.Take(), kSelectDistribution);
    pick_ = [this](auto...) { return Folder("empty"); };
    Click("Command2");
    QCOMPARE(messages_.Take(), kSelectServer);
    Drop(From(), Url("dist"));
    QCOMPARE(From()->text(), Folder("dist"));
    const Options stored = LoadOptions(*registry_);
    QCOMPARE(ToQString(stored.serverPath), Folder("empty"));
    QCOMPARE(ToQString(stored.svnPath), Folder("dist"));
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::FoldersTest)
#include "FoldersTest.moc"
#include "moc_MainFixture.cpp"
