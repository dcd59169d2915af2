#pragma once

#include <QString>

#include "text/String.h"

namespace quenmar {

// Both sides hold 16-bit characters: every text passes unchanged.

[[nodiscard]] inline QString ToQString(StringView text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline String FromQString(const QString& text) { return text.toStdU16String(); }

}  // namespace quenmar
