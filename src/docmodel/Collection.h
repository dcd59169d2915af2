/// What the three collections of the tree share: a plain array that owns its elements.
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "docmodel/DocError.h"
#include "docmodel/ExchangeSort.h"
#include "docmodel/NameOrIndex.h"
#include "docmodel/Ref.h"

namespace quenmar {

/// @tparam Element `Document`, `Field` or `Parameter`.
/// @tparam Reference a shared reference to an `Element`.
/// @tparam Array what holds the references.
///
/// A lookup that finds nothing returns a new, empty element that is in no collection, never null:
/// an empty name means that nothing was found. Writing to such an element changes nothing.
template <class Element, class Reference, class Array = std::vector<Reference>>
class Collection {
 public:
  using Pointer = Reference;

  /// Iterates over elements, not pointers: `for (const Field& field : fields)`.
  template <class Visited>
  class Iterator {
   public:
    explicit Iterator(const Pointer* at) : at_(at) {}
    Visited& operator*() const { return **at_; }
    Iterator& operator++() {
      ++at_;
      return *this;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    const Pointer* at_;
  };

  Collection() = default;
  Collection(const Collection&) = delete;
  Collection& operator=(const Collection&) = delete;

  /// @return the number of elements.
  [[nodiscard]] int Count() const { return static_cast<int>(elements_.size()); }

  // Nothing may be added or removed while a loop goes over the elements.
  [[nodiscard]] auto begin() const { return Iterator<const Element>(elements_.data()); }
  [[nodiscard]] auto end() const { return Iterator<const Element>(elements_.data() + Count()); }
  [[nodiscard]] auto begin() { return Iterator<Element>(elements_.data()); }
  [[nodiscard]] auto end() { return Iterator<Element>(elements_.data() + Count()); }

 protected:
  static constexpr int kNone = -1;

  ~Collection() = default;

  /// @return the position for `index`, `kNone` beyond the last element or in an empty
  /// collection. Throws `DocError` 9 for a negative index into a collection that is not empty.
  [[nodiscard]] int PositionOf(double index) const {
    if (elements_.empty() || index > Count() - 1) return kNone;
    const double rounded = std::nearbyint(index);  // halves go to the even neighbour
    if (!(rounded >= 0)) {
      throw DocError(DocError::kSubscriptOutOfRange, u"Collection", u"Subscript out of range");
    }
    return static_cast<int>(rounded);
  }

  /// @return the position of the first element that `matches`, or `kNone`.
  template <class Predicate>
  [[nodiscard]] int FindFirst(Predicate matches) const {
    for (size_t i = 0; i < elements_.size(); ++i) {
      if (matches(*elements_[i])) return static_cast<int>(i);
    }
    return kNone;
  }

  /// @return the element at `position`, or a new empty one for `kNone`.
  [[nodiscard]] Pointer At(int position) const {
    return position == kNone ? MakeNew() : elements_[static_cast<size_t>(position)];
  }

  [[nodiscard]] static Pointer MakeNew() {
    if constexpr (std::is_same_v<Pointer, std::shared_ptr<Element>>) {
      return std::make_shared<Element>();
    } else {
      return MakeRef<Element>();
    }
  }

  /// Orders the elements by name as `ExchangeSortOrder` describes.
  void SortByName(bool ascendent) {
    std::vector<StringView> names;
    names.reserve(elements_.size());
    for (const Pointer& element : elements_) names.emplace_back(element->Name());

    Array sorted;
    sorted.reserve(elements_.size());
    for (const std::uint32_t position : ExchangeSortOrder(names, ascendent)) {
      sorted.push_back(elements_[position]);
    }
    elements_ = std::move(sorted);
  }

  Array elements_;  // NOLINT(*-non-private-*): only the collections derive from it
};

}  // namespace quenmar
