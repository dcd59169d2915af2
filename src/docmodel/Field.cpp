#include "docmodel/Field.h"

#include <utility>

#include "docmodel/Fields.h"
#include "docmodel/NodeName.h"
#include "docmodel/XmlText.h"

namespace quenmar {

void Field::SetName(SharedText name) {
  CheckName(name, {u"Name", u"Name don't allow spaces", u"Illegal character in name"});
  name_ = std::move(name);
  if (owner_ != nullptr) owner_->NameChanged(*this);
}

void Field::SetValue(SharedText value) {
  value_ = std::move(value);
  if (!Contains(value_, u"&")) return;  // only entity forms change
  String folded(value_);
  XmlUnescape(XmlEscape(folded));
  if (value_ != folded) value_ = folded;
}

}  // namespace quenmar
