#include <QMessageBox>
#include <QtTest>

#include "gui/PrivateState.h"
#include "widgets/QtMessageBoxes.h"
#include "widgets/ShownCursor.h"
#include "widgets/WindowGeometry.h"

namespace quenmar {

using namespace message_style;

class WidgetsTest : public QObject {
  Q_OBJECT

 private slots:
  void EscapeChangesNothing_data();
  void EscapeChangesNothing();
  void WindowsRememberTheirSize();

 private:
  PrivateState state_;
};

void WidgetsTest::EscapeChangesNothing_data() {
  QTest::addColumn<int>("style");
  QTest::addColumn<int>("icon");
  QTest::addColumn<Button>("onEnter");
  QTest::addColumn<Button>("onEscape");
  QTest::newRow("message") << kOk << int(QMessageBox::NoIcon) << Button::kOk << Button::kOk;
  QTest::newRow("failure") << (kOk | kCritical) << int(QMessageBox::Critical) << Button::kOk
                           << Button::kOk;
  QTest::newRow("help") << kInformation << int(QMessageBox::Information) << Button::kOk
                        << Button::kOk;
  QTest::newRow("apply") << (kYesNo | kQuestion) << int(QMessageBox::Question) << Button::kYes
                         << Button::kNo;
  QTest::newRow("ignore") << (kYesNo | kQuestion | kDefaultButton2) << int(QMessageBox::Question)
                          << Button::kNo << Button::kNo;
  QTest::newRow("remove") << (kYesNoCancel | kQuestion | kDefaultButton2)
                          << int(QMessageBox::Question) << Button::kNo << Button::kCancel;
}

void WidgetsTest::EscapeChangesNothing() {
  QFETCH(int, style);
  const ShownCursor busy(Qt::WaitCursor);
  QtMessageBoxes boxes("Title");
  const auto press = [&](Qt::Key key) {
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr || !box->isActiveWindow()) return;
      poll.stop();
      QCOMPARE(box->windowTitle(), QString("Title"));
      QCOMPARE(box->text(), QString("one <b>\ntwo"));
      QCOMPARE(box->textFormat(), Qt::PlainText);
      QVERIFY(box->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
      QTEST(int(box->icon()), "icon");
      QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
      QTest::keyClick(box, key);
    });
    poll.start(0);
    return boxes.Show(u"one <b>\ntwo", style);
  };
  QTEST(press(Qt::Key_Return), "onEnter");
  QTEST(press(Qt::Key_Escape), "onEscape");
  QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

void WidgetsTest::WindowsRememberTheirSize() {
  const auto sizeAfter = [](const QString& key, QSize change) {
    QWidget window;
    window.resize(200, 100);
    new WindowGeometry(&window, key);
    window.show();
    window.resize(window.size() + change);
    window.close();
    return window.size();
  };
  QCOMPARE(sizeAfter("a", {50, 20}), QSize(250, 120));
  QCOMPARE(sizeAfter("a", {0, 0}), QSize(250, 120));
  QCOMPARE(sizeAfter("b", {0, 0}), QSize(200, 100));
}

}  // namespace quenmar

QTEST_MAIN(quenmar::WidgetsTest)
#include "WidgetsTest.moc"
