/// How the program with windows reports a failure before it has a window; one source file per
/// platform.
#pragma once

#include <QString>

namespace quenmar {

/// Shows the text on standard error; where there is none to read, in a box that waits for an
/// answer.
void ShowStartFailure(const QString& text);

}  // namespace quenmar
