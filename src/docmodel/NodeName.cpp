#include "docmodel/NodeName.h"

#include "docmodel/DocError.h"

namespace quenmar {

void CheckName(StringView name, const NameRules& rules) {
  if (Contains(name, u" ")) {
    throw DocError(DocError::kNameHasBlank, String(rules.source), String(rules.blank));
  }
  if (name.find_first_of(u"<>\"") != StringView::npos) {
    throw DocError(DocError::kNameHasIllegalCharacter, String(rules.source), String(rules.illegal));
  }
}

}  // namespace quenmar
