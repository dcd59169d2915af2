#include "widgets/DiffColours.h"

#include <QPlainTextEdit>
#include <QTest>
#include <QTextBlock>
#include <algorithm>
#include <cmath>

#include "widgets/MessageDialog.h"

namespace quenmar {
namespace {

/// @return how well text can be told from its background; 4.5 is enough.
double Contrast(const QColor& one, const QColor& other) {
  const auto light = [](const QColor& colour) {
    const auto part = [](double value) {
      return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF()) + 0.05;
  };
  const double first = light(one);
  const double second = light(other);
  return std::max(first, second) / std::min(first, second);
}

}  // namespace

class DiffColoursTest : public QObject {
  Q_OBJECT

  /// @return the colour of a line; none for one in the text's own.
  static QColor ColourOf(const QPlainTextEdit& text, int line) {
    for (const auto& coloured : text.extraSelections()) {
      if (coloured.cursor.blockNumber() == line) return coloured.format.foreground().color();
    }
    return {};
  }

 private slots:
  void areReadableOnEveryPalette() {
    MessageDialog box("Apply?", {}, QDialogButtonBox::Yes, "@@ -1,2 +1,2 @@\r\n a\r\n-b\r\n+c\r\n",
                      nullptr);
    auto& details = *box.findChild<QPlainTextEdit*>("messageDetails");
    for (const auto& [base, text] :
         {std::pair(Qt::white, Qt::black), std::pair(Qt::black, Qt::white)}) {
      QPalette palette;
      palette.setColor(QPalette::Base, base);
      palette.setColor(QPalette::Text, text);
      details.setPalette(palette);
      QVERIFY(!ColourOf(details, 1).isValid());
      for (const int line : {0, 2, 3}) QVERIFY(Contrast(ColourOf(details, line), base) >= 4.5);
      QVERIFY(ColourOf(details, 2) != ColourOf(details, 3));
    }
  }

  void areForDiffsOnly() {
    MessageDialog box("Apply?", {}, QDialogButtonBox::Yes, "-b\r\n+c\r\n", nullptr);
    QVERIFY(!ColourOf(*box.findChild<QPlainTextEdit*>("messageDetails"), 0).isValid());
  }
};

}  // namespace quenmar

QTEST_MAIN(quenmar::DiffColoursTest)
#include "DiffColoursTest.moc"
