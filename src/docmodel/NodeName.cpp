#include "docmodel/NodeName.h"

#include <algorithm>

#include "docmodel/DocError.h"

namespace quenmar {

void CheckName(StringView name, const NameRules& rules) {
  const auto forbidden = [](char16_t c) {
    return c == u' ' || c == u'<' || c == u'>' || c == u'"';
  };
  if (std::none_of(name.begin(), name.end(), forbidden)) return;
  if (name.find(u' ') != StringView::npos) {
    throw DocError(DocError::kNameHasBlank, String(rules.source), String(rules.blank));
  }
  throw DocError(DocError::kNameHasIllegalCharacter, String(rules.source), String(rules.illegal));
}

}  // namespace quenmar
