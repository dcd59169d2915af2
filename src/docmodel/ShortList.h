#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace quenmar {

/// A growing array with room for its first elements in itself, so that few of them need no further
/// allocation.
/// @tparam T the element type; moving it does not throw.
/// @tparam kInside how many elements fit into the list itself
template <class T, std::uint32_t kInside>
class ShortList {
 public:
  ShortList() {}  // NOLINT(*-use-equals-default): there is no default for the union
  ShortList(const ShortList&) = delete;
  ShortList& operator=(const ShortList&) = delete;
  ~ShortList() {
    std::destroy(begin(), end());
    if (capacity_ > kInside) std::allocator<T>().deallocate(outside_, capacity_);
  }

  [[nodiscard]] size_t size() const { return size_; }
  [[nodiscard]] bool empty() const { return size_ == 0; }
  [[nodiscard]] T* data() { return capacity_ > kInside ? outside_ : inside_; }
  [[nodiscard]] const T* data() const { return capacity_ > kInside ? outside_ : inside_; }
  [[nodiscard]] T* begin() { return data(); }
  [[nodiscard]] T* end() { return data() + size_; }
  [[nodiscard]] T& operator[](size_t i) { return data()[i]; }
  [[nodiscard]] const T& operator[](size_t i) const { return data()[i]; }

  /// Appends `element`.
  /// @return it, in its place.
  T& emplace_back(T element) {
    if (size_ == capacity_) Grow();
    T* const added = new (end()) T(std::move(element));
    ++size_;
    return *added;
  }

  /// Takes out the element at `place`; those behind it move up.
  void erase(T* place) {
    std::move(place + 1, end(), place);
    std::destroy_at(end() - 1);
    --size_;
  }

 private:
  void Grow() {
    const std::uint32_t capacity = capacity_ * 2;
    T* const grown = std::allocator<T>().allocate(capacity);
    std::uninitialized_move(begin(), end(), grown);
    std::destroy(begin(), end());
    if (capacity_ > kInside) std::allocator<T>().deallocate(outside_, capacity_);
    outside_ = grown;
    capacity_ = capacity;
  }

  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = kInside;
  union {
    T inside_[kInside];  // NOLINT(*-avoid-c-arrays): elements that are not constructed yet
    T* outside_;         // once there are more
  };
};

}  // namespace quenmar
