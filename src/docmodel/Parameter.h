#pragma once

#include <utility>

#include "docmodel/Ref.h"
#include "text/SharedText.h"

namespace quenmar {

/// A named attribute of a `Document` or a `Field`.
class Parameter : public Counted {
 public:
  [[nodiscard]] const SharedText& Name() const { return name_; }

  /// Throws `DocError` 32 or 33 and keeps the old name when `name` contains a blank, "<", ">" or a
  /// double quote.
  void SetName(SharedText name);

  [[nodiscard]] const SharedText& Value() const { return value_; }
  void SetValue(SharedText value) { value_ = std::move(value); }

 private:
  SharedText name_;
  SharedText value_;
};

}  // namespace quenmar
