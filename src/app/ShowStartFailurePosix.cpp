#include <iostream>

#include "app/ShowStartFailure.h"
#include "text/Charset.h"
#include "widgets/QtText.h"

namespace quenmar {

void ShowStartFailure(const QString& text) {
  std::cerr << "quenmar: " << ToUtf8(FromQString(text)) << '\n';
}

}  // namespace quenmar
