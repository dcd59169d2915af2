#pragma once

#include <vector>

#include "text/String.h"

namespace quenmar {

/// A text builder whose buffer grows at its end by fixed steps, never by doubling.
class AppendString {
 public:
  /// Characters by which the buffer grows at a time.
  static constexpr size_t kStep = 196608;

  /// Appends a piece of any length.
  void AddToString(StringView strAdd);

  /// @return the text appended so far; the builder keeps it.
  [[nodiscard]] String ReturnString() const { return {buffer_.data(), used_}; }

  /// @return the length of the buffer in characters, a whole number of steps.
  [[nodiscard]] size_t BufferLength() const { return buffer_.size(); }

 private:
  std::vector<char16_t> buffer_;  // only the first `used_` characters are meaningful
  size_t used_ = 0;
};

}  // namespace quenmar
