#pragma once

#include "text/RuntimeError.h"

namespace quenmar {

/// A failure of a file operation. `Number` is the system's own error number (`errno` or
/// `GetLastError`), `Source` the operation, `Description` the system's words for it.
class FileError : public RuntimeError {
 public:
  using RuntimeError::RuntimeError;
};

}  // namespace quenmar
