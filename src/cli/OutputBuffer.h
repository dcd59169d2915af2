#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <string_view>

namespace quenmar {

/// Collects small pieces of output and passes them on to a stream in large ones.
class OutputBuffer {
 public:
  /// `out` outlives this object.
  explicit OutputBuffer(std::ostream& out) : out_(out) {}
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;
  ~OutputBuffer() = default;

  void Append(char byte) {
    if (used_ == bytes_.size()) Flush();
    bytes_[used_++] = byte;
  }

  void Append(std::string_view bytes) {
    if (bytes.size() > bytes_.size() - used_) Flush();
    if (bytes.size() > bytes_.size()) {
      out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
      return;
    }
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(used_));
    used_ += bytes.size();
  }

  /// Passes on what is left; to be called at the end.
  void Flush() {
    out_.write(bytes_.data(), static_cast<std::streamsize>(used_));
    used_ = 0;
  }

 private:
  std::ostream& out_;
  std::array<char, 1U << 14U> bytes_;
  size_t used_ = 0;
};

}  // namespace quenmar
