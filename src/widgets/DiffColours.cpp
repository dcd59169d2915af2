#include "widgets/DiffColours.h"

#include <QEvent>
#include <QPlainTextEdit>

#include "widgets/Colours.h"

namespace quenmar {

DiffColours::DiffColours(QPlainTextEdit* text) : QSyntaxHighlighter(text->document()), text_(text) {
  text->installEventFilter(this);
}

bool DiffColours::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) rehighlight();
  return QSyntaxHighlighter::eventFilter(watched, event);
}

void DiffColours::highlightBlock(const QString& line) {
  constexpr int kRed = 0;
  constexpr int kGreen = 120;
  constexpr int kBlue = 215;
  const auto colour = [this, &line](int hue) {
    const int length = static_cast<int>(line.size());
    setFormat(0, length, ReadableOn(text_->palette().color(QPalette::Base), hue));
  };
  if (line.startsWith('-')) colour(kRed);
  if (line.startsWith('+')) colour(kGreen);
  if (line.startsWith("@@")) colour(kBlue);
}

}  // namespace quenmar
