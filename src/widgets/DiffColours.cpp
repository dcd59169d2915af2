#include "widgets/DiffColours.h"

#include <QEvent>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <optional>

#include "widgets/Colours.h"

namespace quenmar {

namespace {

/// @return the hue of a line in degrees; none for a line that stays.
std::optional<int> HueOf(const QString& line) {
  constexpr int kRed = 0;
  constexpr int kGreen = 120;
  constexpr int kBlue = 215;
  if (line.startsWith('-')) return kRed;
  if (line.startsWith('+')) return kGreen;
  if (line.startsWith("@@")) return kBlue;
  return {};
}

}  // namespace

DiffColours::DiffColours(QPlainTextEdit* text) : QObject(text), text_(text) {
  text->installEventFilter(this);
  Colour();
}

bool DiffColours::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) Colour();
  return QObject::eventFilter(watched, event);
}

// The toolkit's highlighter is no part of its build for Windows.
void DiffColours::Colour() {
  const QColor base = text_->palette().color(QPalette::Base);
  QList<QTextEdit::ExtraSelection> lines;
  for (QTextBlock block = text_->document()->begin(); block.isValid(); block = block.next()) {
    const auto hue = HueOf(block.text());
    if (!hue) continue;
    QTextEdit::ExtraSelection line;
    line.cursor = QTextCursor(block);
    line.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    line.format.setForeground(ReadableOn(base, *hue));
    lines << line;
  }
  text_->setExtraSelections(lines);
}

}  // namespace quenmar
