#pragma once

#include "docmodel/Collection.h"

namespace quenmar {

class Document;

/// The child nodes of a `Document`, in order.
class Documents : public Collection<Document, std::shared_ptr<Document>> {
 public:
  /// @param nameOrIndex an index, or a name that is compared without regard to case
  /// @param occurrence with a name: how many matching children to pass over
  /// @return the child; see `Collection` for none.
  [[nodiscard]] Pointer Child(const NameOrIndex& nameOrIndex, int occurrence = 0) const;

  /// Appends a new child. When the name is rejected (`DocError`), an unnamed child stays in place.
  /// @return the index of the new child.
  int AddChild(StringView name);

  /// Inserts a new child at `index`; a negative index appends. When the name is rejected
  /// (`DocError`), an unnamed child stays in place; an index beyond the end raises `DocError` 9.
  /// @param index receives the index of the new child
  /// @return the same index.
  int AddChild(StringView name, int& index);

  /// Removes the child at the index, or the first child of that name (compared without regard to
  /// case), provided that it satisfies `sParameters` (see `SearchChild`).
  /// @return whether a child was removed.
  bool RemoveChild(const NameOrIndex& nameOrIndex, StringView sParameters = {});

  /// Replaces the child at the index, or the first child of that name (compared without regard to
  /// case), by `child` (not null).
  /// @return whether a child was replaced.
  bool SetChild(const NameOrIndex& nameOrIndex, const Pointer& child);

  /// @return the last child of that name, compared exactly or without regard to case.
  [[nodiscard]] Pointer SearchChild2(StringView childName, bool ignoreCase) const;

  /// Finds the first child of that name that satisfies every condition of `sParameters`.
  /// @param sParameters conditions "name=value" separated by commas, the value optionally in single
  ///   quotes: the child's parameter `name`, or with a leading "." its field, has exactly that
  ///   value; an absent one has the empty value. Empty text sets no condition.
  /// @param multiLevelSearch when no child qualifies, search each child's own children, depth first
  [[nodiscard]] Pointer SearchChild(StringView name, StringView sParameters, bool ignoreCase,
                                    bool multiLevelSearch) const;

  /// @return all children that `SearchChild` would accept, in tree order.
  [[nodiscard]] std::vector<Pointer> GetChilds(StringView name, StringView sParameters,
                                               bool ignoreCase, bool multiLevelSearch) const;

  /// Orders the children by name as `ExchangeSortOrder` describes.
  void Sort(bool ascendent);

 private:
  [[nodiscard]] int Find(const NameOrIndex& nameOrIndex, int occurrence) const;
};

}  // namespace quenmar
