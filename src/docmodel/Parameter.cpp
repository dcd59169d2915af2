#include "docmodel/Parameter.h"

#include "docmodel/NodeName.h"

namespace quenmar {

void Parameter::SetName(SharedText name) {
  CheckName(name, {u"Name", u"Parameter Name don't allow spaces",
                   u"Illegal character in parameter name"});
  name_ = std::move(name);
}

}  // namespace quenmar
