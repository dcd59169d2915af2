#include "docmodel/Field.h"

#include "docmodel/Fields.h"
#include "docmodel/NodeName.h"
#include "docmodel/XmlText.h"

namespace quenmar {

void Field::SetName(StringView name) {
  CheckName(name, {u"Name", u"Name don't allow spaces", u"Illegal character in name"});
  name_ = name;
  if (owner_ != nullptr) owner_->NameChanged(*this);
}

String Field::Value() const {
  String value = escapedValue_;
  return std::move(XmlUnescape(value));
}

void Field::SetValue(StringView value) {
  escapedValue_ = value;
  XmlEscape(escapedValue_);
}

}  // namespace quenmar
