#pragma once

#include <cstdint>
#include <utility>

namespace quenmar {

/// Counts the references to an object; a base of every class that `Ref` refers to.
class Counted {
 public:
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

 protected:
  Counted() = default;
  ~Counted() = default;

 private:
  template <class T>
  friend class Ref;

  std::uint32_t references_ = 0;
};

/// A shared reference to an object on the heap; the last one deletes it. The count is in the
/// object, which keeps trees of many small objects small. Not safe for use from two threads.
template <class T>
class Ref {
 public:
  Ref() = default;
  explicit Ref(T* object) : object_(object) { Count(); }
  Ref(const Ref& other) : object_(other.object_) { Count(); }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(const Ref& other) {
    Ref copy(other);
    std::swap(object_, copy.object_);
    return *this;
  }
  Ref& operator=(Ref&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_ != nullptr && --object_->references_ == 0) delete object_;
  }

  [[nodiscard]] T* get() const { return object_; }
  T& operator*() const { return *object_; }
  T* operator->() const { return object_; }

  friend bool operator==(const Ref&, const Ref&) = default;

 private:
  void Count() {
    if (object_ != nullptr) ++object_->references_;
  }

  T* object_ = nullptr;
};

/// @return a reference to a new object.
template <class T>
[[nodiscard]] Ref<T> MakeRef() {
  return Ref<T>(new T);
}

}  // namespace quenmar
