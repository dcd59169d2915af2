/// What the windows' program has to tell before a window stands; one source file per platform.
#pragma once

#include <QString>

namespace quenmar {

/// Shows the text to whoever started the program: where there is no standard error to read, as a
/// box that waits for an answer.
void Complain(const QString& text);

}  // namespace quenmar
