#include "text/String.h"

#include <charconv>

namespace quenmar {

String ReplaceAll(StringView text, StringView from, StringView to) {
  String result;
  size_t start = 0;
  for (size_t hit = text.find(from); hit != StringView::npos; hit = text.find(from, start)) {
    result.append(text, start, hit - start).append(to);
    start = hit + from.size();
  }
  return result.append(text, start);
}

StringView Trim(StringView text, StringView blanks) {
  const size_t first = text.find_first_not_of(blanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool Contains(StringView text, StringView part) { return text.find(part) != StringView::npos; }

std::vector<StringView> Split(StringView text, char16_t separator) {
  std::vector<StringView> pieces;
  for (size_t end = text.find(separator); end != StringView::npos; end = text.find(separator)) {
    pieces.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.push_back(text);
  return pieces;
}

int ToInteger(StringView text) {
  std::string digits;
  for (const char16_t character : Trim(text)) {
    if (character > u'9') return 0;
    digits.push_back(static_cast<char>(character));
  }
  if (digits.starts_with("+") && !digits.starts_with("+-")) digits.erase(0, 1);
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return error == std::errc() && end == digits.data() + digits.size() ? number : 0;
}

String ToText(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

}  // namespace quenmar
