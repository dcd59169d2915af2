#include "text/CaseFolding.h"

#include <algorithm>

namespace quenmar {

namespace {

char16_t ToLowerBeyondAscii(char16_t character) {
  constexpr char16_t kMultiplicationSign = 0x00D7;
  constexpr char16_t kCapitalYDiaeresis = 0x0178;
  if (character >= 0x00C0 && character <= 0x00DE && character != kMultiplicationSign) {
    return static_cast<char16_t>(character + 0x20);
  }
  switch (character) {
    case 0x0152:  // OE ligature
    case 0x0160:  // S caron
    case 0x017D:  // Z caron
      return static_cast<char16_t>(character + 1);
    case kCapitalYDiaeresis:
      return 0x00FF;
    default:
      return character;
  }
}

}  // namespace

char16_t ToLower(char16_t character) {
  if (character >= 0x80) return ToLowerBeyondAscii(character);
  const bool capital = character >= u'A' && character <= u'Z';
  return capital ? static_cast<char16_t>(character + 0x20) : character;
}

String ToLower(StringView text) {
  String result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char16_t character) { return ToLower(character); });
  return result;
}

bool EqualIgnoringCase(StringView left, StringView right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return ToLower(a) == ToLower(b); });
}

}  // namespace quenmar
