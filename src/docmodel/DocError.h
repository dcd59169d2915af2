#pragma once

#include "text/RuntimeError.h"

namespace quenmar {

/// A failure of the document tree: a rejected name (32, 33) or a subscript outside a collection
/// (9).
class DocError : public RuntimeError {
 public:
  static constexpr int kSubscriptOutOfRange = 9;
  static constexpr int kNameHasBlank = 32;
  static constexpr int kNameHasIllegalCharacter = 33;

  using RuntimeError::RuntimeError;
};

}  // namespace quenmar
