#include "widgets/FindBar.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace quenmar {
namespace {

using Choice = SettingFilter::Choice;

bool Shows(const FindBar& bar, StringView name, bool commentedOut = false) {
  return bar.Filter().Shows({name, {}, {}, {}, true, commentedOut});
}

}  // namespace

class FindBarTest : public QObject {
  Q_OBJECT

 private slots:
  void filtersWhileItIsOpen() {
    const Language language;
    QDialog window;
    auto* const bar = new FindBar(language, {Choice::kAll, Choice::kCommentedOut}, &window);
    auto* const other = new QLineEdit;
    auto* const layout = new QVBoxLayout(&window);
    layout->addWidget(bar);
    layout->addWidget(other);
    auto* const text = window.findChild<QLineEdit*>("txtFind");
    auto* const choice = window.findChild<QComboBox*>("cmbFind");
    const QSignalSpy toggled(bar, &FindBar::Toggled);
    const QSignalSpy changed(bar, &FindBar::FilterChanged);
    const QSignalSpy accepted(bar, &FindBar::Accepted);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(!bar->isVisible() && bar->Filter().ShowsAll());

    QTest::keySequence(other, QKeySequence::Find);
    QVERIFY(bar->isVisible() && text->hasFocus());
    QVERIFY(text->toolTip().contains(QKeySequence(QKeySequence::Find).toString()));
    QTest::keyClicks(text, "Ab");
    QVERIFY(Shows(*bar, u"cab") && !Shows(*bar, u"ba"));
    choice->setCurrentIndex(1);
    QVERIFY(Shows(*bar, u"cab", true) && !Shows(*bar, u"cab"));
    QCOMPARE(changed.count(), 4);
    bar->ShowCount(12, 300);
    QCOMPARE(window.findChild<QLabel*>("lblFind")->text(), QString("12 of 300"));
    QTest::keyClick(text, Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);

    other->setFocus();
    QTest::keyClick(other, Qt::Key_Escape);
    QVERIFY(window.isVisible() && !bar->isVisible() && bar->Filter().ShowsAll());
    QCOMPARE(changed.count(), 5);
    QCOMPARE(toggled.count(), 2);
    bar->Action()->trigger();
    QVERIFY(text->text().isEmpty() && choice->currentIndex() == 0);
    bar->Close();
    QTest::keyClick(other, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::FindBarTest)
#include "FindBarTest.moc"
