#include <iostream>

#include "app/Complaint.h"
#include "text/Charset.h"
#include "widgets/QtText.h"

namespace quenmar {

void Complain(const QString& text) {
  std::cerr << "quenmar: " << ToUtf8(FromQString(text)) << '\n';
}

}  // namespace quenmar
