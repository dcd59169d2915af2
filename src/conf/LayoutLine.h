/// How one line of a configuration file gets another value or another state.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "conf/ConfLine.h"

namespace quenmar {

/// @return whether it is one of the lines that a comment block is made of.
[[nodiscard]] inline bool IsCommentLine(const ConfLine& line) {
  return line.kind == ConfLine::Kind::kComment || line.kind == ConfLine::Kind::kNote;
}

/// Changes nothing in the line but what is wanted. An empty old value gets the new one behind the
/// colon and one blank; a value that ends in "/" gets a blank between itself and a remark that
/// would otherwise begin within it.
/// @param line of a setting or series entry
/// @param value in the line's character set; nothing keeps the line's own
/// @param active whether the line is to be active; the two slashes directly before the name come
/// or go
/// @return the line without its end.
[[nodiscard]] std::string RewriteLine(const ConfLine& line, std::optional<std::string_view> value,
                                      bool active);

}  // namespace quenmar
