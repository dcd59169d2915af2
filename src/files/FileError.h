#pragma once

#include "text/RuntimeError.h"

namespace quenmar {

/// A failure of a file operation. `Number` is the system's own error number (`errno` or
/// `GetLastError`), `Source` the operation, `Description` the system's message.
class FileError : public RuntimeError {
 public:
  using RuntimeError::RuntimeError;
};

/// A failure after which the file has neither its old nor its new content: writing failed half-way
/// and the old bytes could not be put back. The description is that of the first failure.
class FileDamaged : public FileError {
 public:
  using FileError::FileError;
};

}  // namespace quenmar
