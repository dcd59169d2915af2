#pragma once

#include "docmodel/Collection.h"
#include "docmodel/Parameter.h"
#include "docmodel/ShortList.h"

namespace quenmar {

/// The attributes of a `Document` or a `Field`, in order. Names compare without regard to case.
/// Two of them, which is what every field of a configuration file has, need no array of their own.
class Parameters : public Collection<Parameter, Ref<Parameter>, ShortList<Ref<Parameter>, 2>> {
 public:
  /// @return the first parameter of that name, or the one at that index; see `Collection`.
  [[nodiscard]] Pointer Parameter(const NameOrIndex& nameOrIndex) const;

  /// Appends; a name that is there already is accepted. When the name is rejected (`DocError`), an
  /// unnamed parameter stays at the end.
  /// A `SharedText` is shared and not copied.
  /// @return the index of the new parameter.
  int AddParameter(SharedText name, SharedText value);

  /// @return whether an element was removed.
  bool RemoveParameter(const NameOrIndex& nameOrIndex);

 private:
  [[nodiscard]] int Find(const NameOrIndex& nameOrIndex) const;
};

}  // namespace quenmar
