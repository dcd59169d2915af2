#include "conf/LayoutLine.h"

namespace quenmar {

namespace {

constexpr std::string_view kSlashes = "//";

size_t NameStart(const ConfLine& line) {
  return static_cast<size_t>(line.name.data() - line.bytes.data());
}

/// @param bytes of the line as it is
void ReplaceValue(const ConfLine& line, std::string_view value, std::string& bytes) {
  std::string written(value);
  size_t start = NameStart(line) + line.name.size() + 1;
  if (!line.value.empty()) {
    start = static_cast<size_t>(line.value.data() - line.bytes.data());
  } else if (line.bytes.substr(start).starts_with(' ')) {
    ++start;
  } else {
    written.insert(0, " ");
  }
  const std::string_view rest = line.bytes.substr(start + line.value.size());
  if (value.ends_with('/') && rest.starts_with('/')) written += ' ';
  bytes.replace(start, line.value.size(), written);
}

}  // namespace

std::string RewriteLine(const ConfLine& line, std::optional<std::string_view> value, bool active) {
  std::string bytes(line.bytes);
  if (value) ReplaceValue(line, *value, bytes);
  // The value is behind the name, so the name is still where it was.
  const size_t name = NameStart(line);
  if (active && line.commented) bytes.erase(name - kSlashes.size(), kSlashes.size());
  if (!active && !line.commented) bytes.insert(name, kSlashes);
  return bytes;
}

}  // namespace quenmar
