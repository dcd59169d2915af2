/// The error type of the core: a number, a source and a description.
#pragma once

#include <exception>
#include <string>

#include "text/String.h"

namespace quenmar {

/// A failure at run time. Layers derive their own type from it; only the edges (the conf reader
/// and writer, the windows, the console) turn it into words for the user.
class RuntimeError : public std::exception {
 public:
  /// @param number what kind of failure it is, within the source's own numbering
  /// @param source the class or operation that failed
  /// @param description the sentence that a message shows
  RuntimeError(int number, String source, String description);

  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] const String& Source() const { return source_; }
  [[nodiscard]] const String& Description() const { return description_; }
  /// @return the description as UTF-8.
  [[nodiscard]] const char* what() const noexcept override { return what_.c_str(); }

 private:
  int number_;
  String source_;
  String description_;
  std::string what_;
};

/// @return the description of a `RuntimeError`, or `what()` of any other exception.
[[nodiscard]] String DescriptionOf(const std::exception& error);

}  // namespace quenmar
