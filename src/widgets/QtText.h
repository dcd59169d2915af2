#pragma once

#include <QString>
#include <QTextDocument>

#include "text/String.h"

namespace quenmar {

// Both sides have 16-bit characters: every text passes unchanged.

[[nodiscard]] inline QString ToQString(StringView text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

/// @return the text as captions take it, letter for letter: a single ampersand would make a key.
[[nodiscard]] inline QString ToCaption(StringView text) {
  return ToQString(text).replace('&', "&&");
}

/// @return the text as tool tips take it, letter for letter: what looks like marks of a rich text
/// would be taken for such.
[[nodiscard]] inline QString ToToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

/// @return a caption for places where none ends in a colon, such as menus.
[[nodiscard]] inline QString WithoutColon(const QString& caption) {
  return caption.endsWith(':') ? caption.chopped(1) : caption;
}

[[nodiscard]] inline String FromQString(const QString& text) { return text.toStdU16String(); }

}  // namespace quenmar
