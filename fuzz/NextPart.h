#pragma once

#include <algorithm>
#include <string_view>

namespace quenmar {

/// Takes the bytes before the next form feed off the front of `rest`. @return them.
inline std::string_view NextPart(std::string_view& rest) {
  const size_t end = std::min(rest.find('\f'), rest.size());
  const std::string_view part = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return part;
}

}  // namespace quenmar
