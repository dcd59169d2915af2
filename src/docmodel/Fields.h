#pragma once

#include <cstdint>
#include <vector>

#include "docmodel/Collection.h"
#include "docmodel/Field.h"

namespace quenmar {

/// The named values of a `Document`, in order. A lookup by name is a linear scan; to make its step
/// cheap, a 16-bit hash of each name is in an array of its own, where one instruction compares
/// eight of them. Two trees are mostly in the same order, so a lookup first tries the field behind
/// the one found last, provided that no field before it has the same name.
class Fields : public Collection<Field, Ref<Field>> {
 public:
  Fields() = default;
  Fields(const Fields&) = delete;
  Fields& operator=(const Fields&) = delete;
  ~Fields();

  /// @return the first field of exactly that name, or the one at that index; see `Collection`.
  [[nodiscard]] Pointer Field(const NameOrIndex& nameOrIndex) const;

  /// @return the index of the first field of exactly that name, -1 when there is none.
  [[nodiscard]] int IndexOf(StringView name) const;

  /// Appends; a name that is there already is accepted (the conf reader needs it for repeated
  /// names). When the name is rejected (`DocError`), an unnamed field stays at the end. A
  /// `SharedText`, such as the name of a field in another tree, is shared and not copied.
  /// @return the index of the new field.
  int AddField(SharedText name, SharedText value);

  /// @return whether an element was removed.
  bool RemoveField(const NameOrIndex& nameOrIndex);

  /// @return the last field of that name, compared exactly or without regard to case.
  [[nodiscard]] Pointer SearchField(StringView fieldName, bool ignoreCase) const;

  /// Orders the fields by name as `ExchangeSortOrder` describes.
  void Sort(bool ascendent);

 private:
  friend class quenmar::Field;

  [[nodiscard]] int Find(const NameOrIndex& nameOrIndex) const;
  void NameChanged(quenmar::Field& field);

  std::vector<std::uint16_t> hashes_;
  mutable size_t next_ = 0;
  mutable String missing_;  // a name that no field has; empty where none is known
  mutable std::uint16_t missingHash_ = 0;
};

}  // namespace quenmar
