#include "docmodel/Parameter.h"

#include "docmodel/NodeName.h"

namespace quenmar {

void Parameter::SetName(StringView name) {
  CheckName(name, {u"Name", u"Parameter Name don't allow spaces",
                   u"Illegal character in parameter name"});
  name_ = name;
}

}  // namespace quenmar
