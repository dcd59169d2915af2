#include "docmodel/Parameters.h"

#include <utility>

#include "text/CaseFolding.h"

namespace quenmar {

int Parameters::Find(const NameOrIndex& nameOrIndex) const {
  if (!nameOrIndex.IsName()) return PositionOf(nameOrIndex.Index());
  return FindFirst([&nameOrIndex](const quenmar::Parameter& parameter) {
    return EqualIgnoringCase(parameter.Name(), nameOrIndex.Name());
  });
}

Parameters::Pointer Parameters::Parameter(const NameOrIndex& nameOrIndex) const {
  return At(Find(nameOrIndex));
}

int Parameters::AddParameter(SharedText name, SharedText value) {
  // Grow first, then name: callers that catch a rejected name find the unnamed element in place.
  quenmar::Parameter& added = *elements_.emplace_back(MakeNew());
  added.SetName(std::move(name));
  added.SetValue(std::move(value));
  return Count() - 1;
}

bool Parameters::RemoveParameter(const NameOrIndex& nameOrIndex) {
  const int position = Find(nameOrIndex);
  if (position == kNone) return false;
  elements_.erase(elements_.begin() + position);
  return true;
}

}  // namespace quenmar
