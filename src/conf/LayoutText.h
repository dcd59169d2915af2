#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conf/ConfLine.h"
#include "conf/Layout.h"

namespace quenmar {

/// Puts the new text together, line by line from the base's first to its last: each base line is
/// kept, replaced or left out, and new lines come between. Takes care of the line ends.
class LayoutText {
 public:
  /// @param start what the text begins with: a byte order mark or nothing
  /// @param base the base's lines; new lines get the line end that most of these have
  LayoutText(std::string_view start, const std::vector<ConfLine>& base);

  void Keep(const ConfLine& line);
  void Replace(const ConfLine& line, std::string_view bytes);
  void Add(std::string_view bytes);

  /// Adds a blank line unless the last line is one or there is none.
  void PartParagraphs();

  /// @return the new text, moved out of this object.
  [[nodiscard]] std::string TakeBytes();

 private:
  void Put(std::string_view bytes, LineEnd end);

  size_t start_;
  LineEnd newEnd_;
  std::string bytes_;
  LineEnd lastEnd_ = LineEnd::kCrLf;
  bool lastBlank_ = true;  // the last line, if there is one
};

}  // namespace quenmar
