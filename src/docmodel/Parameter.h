#pragma once

#include "text/String.h"

namespace quenmar {

/// A named attribute of a `Document` or a `Field`.
class Parameter {
 public:
  [[nodiscard]] const String& Name() const { return name_; }

  /// Throws `DocError` 32 or 33 and keeps the old name when `name` holds a blank, "<", ">" or a
  /// double quote.
  void SetName(StringView name);

  [[nodiscard]] const String& Value() const { return value_; }
  void SetValue(StringView value) { value_ = value; }

 private:
  String name_;
  String value_;
};

}  // namespace quenmar
