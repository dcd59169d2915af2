#include "docmodel/NodeName.h"

#include <algorithm>

#include "docmodel/DocError.h"

namespace quenmar {

void CheckName(StringView name, const NameRules& rules) {
  if (name.find(u' ') != StringView::npos) {
    throw DocError(DocError::kNameHasBlank, String(rules.source), String(rules.blank));
  }
  const auto illegal = [](char16_t c) { return c == u'<' || c == u'>' || c == u'"'; };
  if (std::any_of(name.begin(), name.end(), illegal)) {
    throw DocError(DocError::kNameHasIllegalCharacter, String(rules.source), String(rules.illegal));
  }
}

}  // namespace quenmar
