#pragma once

#include <cstdint>

#include "text/SharedText.h"

namespace quenmar {

/// The argument that picks an element of a collection: strings are names, whole numbers and
/// `double` are indexes counted from 0. It only views the name, so it must not outlive the call.
class NameOrIndex {
 public:
  // Conversions are implicit so that callers write Child(u"map") and Child(0) alike.
  NameOrIndex(StringView name) : name_(name), isName_(true) {}          // NOLINT(*-explicit-*)
  NameOrIndex(const String& name) : NameOrIndex(StringView(name)) {}    // NOLINT(*-explicit-*)
  NameOrIndex(const SharedText& name) : NameOrIndex(name.View()) {}     // NOLINT(*-explicit-*)
  NameOrIndex(const char16_t* name) : NameOrIndex(StringView(name)) {}  // NOLINT(*-explicit-*)
  NameOrIndex(std::int16_t index) : index_(index) {}                    // NOLINT(*-explicit-*)
  NameOrIndex(std::int32_t index) : index_(index) {}                    // NOLINT(*-explicit-*)
  NameOrIndex(double index) : index_(index) {}                          // NOLINT(*-explicit-*)

  // Single-precision numbers, bytes and characters are neither indexes nor names: the compiler
  // rejects them.
  NameOrIndex(float) = delete;
  NameOrIndex(bool) = delete;
  NameOrIndex(char) = delete;
  NameOrIndex(signed char) = delete;
  NameOrIndex(unsigned char) = delete;
  NameOrIndex(wchar_t) = delete;
  NameOrIndex(char8_t) = delete;
  NameOrIndex(char16_t) = delete;

  [[nodiscard]] bool IsName() const { return isName_; }
  [[nodiscard]] StringView Name() const { return name_; }
  [[nodiscard]] double Index() const { return index_; }

 private:
  StringView name_;
  double index_ = 0;
  bool isName_ = false;
};

}  // namespace quenmar
