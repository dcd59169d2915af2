/// How the program with windows reports a failure before it has a window; one source file per
/// platform.
#pragma once

#include <QString>

namespace quenmar {

/// Shows the text on standard error; on Windows in a message box.
void ShowStartFailure(const QString& text);

}  // namespace quenmar
