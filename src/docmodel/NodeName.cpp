#include "docmodel/NodeName.h"

#include <algorithm>
#include <cstdint>

#include "docmodel/DocError.h"

namespace quenmar {

void CheckName(StringView name, const NameRules& rules) {
  constexpr auto bit = [](char16_t c) { return std::uint64_t{1} << c; };
  constexpr std::uint64_t kForbidden = bit(u' ') | bit(u'<') | bit(u'>') | bit(u'"');
  const auto forbidden = [](char16_t c) { return c < 64 && (kForbidden >> c & 1U) != 0; };
  if (std::none_of(name.begin(), name.end(), forbidden)) return;
  if (name.find(u' ') != StringView::npos) {
    throw DocError(DocError::kNameHasBlank, String(rules.source), String(rules.blank));
  }
  throw DocError(DocError::kNameHasIllegalCharacter, String(rules.source), String(rules.illegal));
}

}  // namespace quenmar
