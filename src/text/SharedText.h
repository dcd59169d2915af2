#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <utility>

#include "text/String.h"

namespace quenmar {

/// A text that never changes, shared by its copies: one allocation has its characters, its length
/// and the number of copies, so a copy only counts. The empty text needs no allocation. The count
/// is not safe for use from two threads.
///
/// It converts to and from `StringView`; a view of it is valid as long as any copy exists.
class SharedText {
 public:
  SharedText() = default;

  /// Copies the characters of `text`. Implicit, so that functions that keep a text take any.
  template <std::convertible_to<StringView> Text>
  requires(!std::same_as<Text, SharedText>) SharedText(const Text& text)  // NOLINT(*-explicit-*)
      : block_(Copy(text)) {}

  /// Makes a text of `size` characters without a copy of them.
  /// @param fill is called with the address of the characters, which it writes; not for an empty
  /// text
  template <class Fill>
  [[nodiscard]] static SharedText Filled(size_t size, Fill fill) {
    SharedText text;
    text.block_ = Allocate(size);
    if (size > 0) fill(text.block_->Characters());
    return text;
  }

  SharedText(const SharedText& other) : block_(other.block_) {
    if (block_ != nullptr) ++block_->copies;
  }
  SharedText(SharedText&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  SharedText& operator=(const SharedText& other) {
    SharedText copy(other);
    std::swap(block_, copy.block_);
    return *this;
  }
  SharedText& operator=(SharedText&& other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~SharedText() {
    if (block_ != nullptr && --block_->copies == 0) Free(block_);
  }

  /// @return the characters, for as long as this or a copy of it exists.
  [[nodiscard]] StringView View() const {
    return block_ == nullptr ? StringView() : StringView(block_->Characters(), block_->size);
  }
  operator StringView() const { return View(); }  // NOLINT(*-explicit-*)

  [[nodiscard]] bool empty() const { return block_ == nullptr; }

  template <std::convertible_to<StringView> Text>
  friend bool operator==(const SharedText& left, const Text& right) {
    return left.Equals(right);
  }
  template <std::convertible_to<StringView> Text>
  friend std::strong_ordering operator<=>(const SharedText& left, const Text& right) {
    return left.View() <=> StringView(right);
  }

 private:
  /// Compares memory, which is faster than character by character.
  [[nodiscard]] bool Equals(StringView other) const {
    return other.size() == View().size() &&
           (block_ == nullptr ||
            std::memcmp(block_->Characters(), other.data(), other.size() * sizeof(char16_t)) == 0);
  }

  /// What an allocation begins with; the characters follow.
  struct Block {
    std::uint32_t copies;
    std::uint32_t size;

    [[nodiscard]] char16_t* Characters() { return reinterpret_cast<char16_t*>(this + 1); }
  };

  /// @return a block for one copy of `text`; null for an empty one.
  static Block* Copy(StringView text);
  static Block* Allocate(size_t size);
  static void Free(Block* block);

  Block* block_ = nullptr;
};

}  // namespace quenmar
