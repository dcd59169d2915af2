#include <QClipboard>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QtTest>
#include <functional>

#include "widgets/MessageDialog.h"
#include "widgets/QtMessageBoxes.h"
#include "widgets/QtText.h"
#include "widgets/ScreenFit.h"
#include "widgets/ShownCursor.h"
#include "widgets/WindowGeometry.h"
#include "widgets/WindowTest.h"

namespace quenmar {

using namespace message_style;

class WidgetsTest : public QObject {
  Q_OBJECT

  /// Shows a message box and acts on it once it has the focus. @return the answer.
  Button Answer(const String& text, int style, const String& details,
                const std::function<void(MessageDialog*)>& act, const String& offer = {}) {
    QtMessageBoxes boxes("Title");
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
      auto* const box = qobject_cast<MessageDialog*>(QApplication::activeModalWidget());
      if (box == nullptr || !box->isActiveWindow()) return;
      poll.stop();
      const auto close = qScopeGuard([box] {  // also where `act` fails
        if (box->isVisible()) box->reject();
      });
      act(box);
    });
    poll.start(0);
    return boxes.ShowWithDetails(text, style, details, offer);
  }

  PrivateState state_;

 private slots:
  void EscapeChangesNothing() {
    const std::initializer_list<std::tuple<int, Button, Button>> cases = {
        {kOk, Button::kOk, Button::kOk},
        {kOk | kCritical, Button::kOk, Button::kOk},
        {kYesNo | kQuestion, Button::kYes, Button::kCancel},
        {kYesNo | kQuestion | kDefaultButton2, Button::kNo, Button::kCancel},
        {kYesNoCancel | kQuestion | kDefaultButton2, Button::kNo, Button::kCancel}};
    const ShownCursor busy(Qt::WaitCursor);
    for (const auto& [style, onEnter, onEscape] : cases) {
      const auto answer = [&, style = style](auto act) {
        return Answer(u"one <b>\ntwo", style, {}, [act](MessageDialog* box) {
          QCOMPARE(box->windowTitle(), QString("Title"));
          QCOMPARE(box->findChild<MessageText*>()->toPlainText(), QString("one <b>\ntwo"));
          QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
          act(box);
        });
      };
      const auto onKey = [&](auto key) {
        return answer([key](QWidget* box) { QTest::keyClick(box, key); });
      };
      QCOMPARE(onKey(Qt::Key_Return), onEnter);
      QCOMPARE(onKey(Qt::Key_Escape), onEscape);
      QCOMPARE(answer([](QWidget* box) { box->close(); }), onEscape);
      if ((style & kButtons) == kOk) continue;
      QCOMPARE(onKey('y'), Button::kYes);
      QCOMPARE(onKey('n'), Button::kNo);
    }
    const auto press = [](MessageDialog* box) { box->findChild<QPushButton*>("offer")->click(); };
    QCOMPARE(Answer(u"?", kYesNo, {}, press, u"First"), Button::kOffer);
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }

  void BoxesKeepToTheScreen() {
    String lines, path;
    for (int i = 0; i < 500; ++i) {
      lines += u"- some_setting: a line of the file that is long\n";
      path += u"/folder";
    }
    const std::pair<String, String> cases[] = {
        {lines, u""}, {path, u""}, {u"Apply?", lines + path}, {lines, lines}};
    for (const auto& [text, details] : cases) {
      Answer(text, kYesNo, details, [&text = text, &details = details](MessageDialog* box) {
        const QRect screen = box->screen()->availableGeometry();
        if (!details.empty()) {
          auto* const button = box->findChild<QPushButton*>("showDetails");
          button->setFocus();
          QTest::keyClick(button, Qt::Key_Return);  // is no answer
          QCoreApplication::processEvents();
          QVERIFY(box->findChild<MessageText*>("messageDetails")->height() > screen.height() / 4);
        }
#ifdef Q_OS_WIN
        // Where Wine's windows are in the end is up to the window manager around it.
        const QRect whole = QRect(screen.topLeft(), box->frameGeometry().size());
#else
        const QRect whole = box->frameGeometry();
#endif
        QVERIFY2(screen.contains(whole), qPrintable(QDebug::toString(whole)));
        for (const QPushButton* const button : box->findChildren<QPushButton*>()) {
          const QRect place(button->mapTo(box, QPoint()), button->size());
          QVERIFY(box->rect().contains(place) && button->width() >= button->sizeHint().width());
        }
        auto* const shown = box->findChild<MessageText*>("messageText");
        QCOMPARE(shown->horizontalScrollBar()->maximum(), 0);  // a path wraps
        shown->selectAll();
        shown->copy();
        QCOMPARE(FromQString(QGuiApplication::clipboard()->text()), text);
      });
    }
  }

  void ShortTextsNeedNoScrolling() {
    for (const String& text :
         {String(u"Saved!"), String(90, u'x'), String(u"- a: b\r\n+ a: c\r\n")}) {
      Answer(text, kYesNo, text, [](MessageDialog* box) {
        box->findChild<QPushButton*>("showDetails")->click();
        QCoreApplication::processEvents();
        for (const MessageText* const shown : box->findChildren<MessageText*>()) {
          QCOMPARE(shown->verticalScrollBar()->maximum(), 0);
          QCOMPARE(shown->horizontalScrollBar()->maximum(), 0);
        }
      });
    }
  }

  void BoxesAreOverTheWindow() {
    QWidget window;
    window.show();
    QDialog editor(&window);
    for (QWidget* const expected : {&window, static_cast<QWidget*>(&editor)}) {
      if (expected == &editor) editor.open();
      for (int i = 0; i < 2; ++i) {  // one behind the other
        Answer(u"?", kOk, {},
               [expected](MessageDialog* box) { QCOMPARE(box->parentWidget(), expected); });
      }
    }
  }

  void WindowsFitOnTheScreen() {
    QWidget window;
    auto* const content = new QWidget;
    content->setMinimumSize(4000, 4000);
    auto* const column = new QVBoxLayout(&window);
    column->addWidget(MakeScrollable(content));
    window.setGeometry(700, 500, 3000, 3000);
    new WindowGeometry(&window, "large");
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(window.screen()->availableGeometry().contains(window.frameGeometry()));
  }

  void WindowsRememberTheirSize() {
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

  void DiffsAreReadableOnEveryPalette() {
    const std::string lines = "@@ -1,2 +1,2 @@\n a\n-b\n+c\n";
    const MessageDialog box("Apply?", {}, QDialogButtonBox::Yes, lines.c_str(), nullptr);
    auto* const details = box.findChild<QPlainTextEdit*>("messageDetails");
    for (const QColor base : {Qt::white, Qt::black}) {
      QPalette palette;
      palette.setColor(QPalette::Base, base);
      details->setPalette(palette);
      QStringList coloured;
      for (const auto& line : details->extraSelections()) {
        const QColor colour = line.format.foreground().color();
        // On white about a contrast of 4.5 to 1; on black more.
        QVERIFY(qAbs(qGray(colour.rgb()) - qGray(base.rgb())) > 137);
        coloured << line.cursor.selectedText() + colour.name();
      }
      QCOMPARE(coloured.size(), 3);
      QVERIFY(coloured[1].startsWith("-b") && coloured[2].startsWith("+c"));
      QVERIFY(coloured[1].mid(2) != coloured[2].mid(2));
    }
    const MessageDialog other("Apply?", {}, QDialogButtonBox::Yes, "-b\n+c\n", nullptr);
    QVERIFY(other.findChild<QPlainTextEdit*>("messageDetails")->extraSelections().isEmpty());
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::WidgetsTest)
#include "WidgetsTest.moc"
