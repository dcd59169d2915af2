#pragma once

#include "docmodel/Parameters.h"
#include "docmodel/Ref.h"
#include "text/SharedText.h"

namespace quenmar {

class Fields;

/// A named value of a `Document`, with parameters of its own.
class Field : public Counted {
 public:
  Field() = default;
  Field(const Field&) = delete;
  Field& operator=(const Field&) = delete;
  ~Field() = default;

  [[nodiscard]] const SharedText& Name() const { return name_; }

  /// Throws `DocError` 32 or 33 and keeps the old name when `name` holds a blank, "<", ">" or a
  /// double quote.
  void SetName(SharedText name);

  /// @return the value as it was written, except that entity forms it held then (such as "&lt;")
  /// come back as the characters they stand for.
  [[nodiscard]] const SharedText& Value() const { return value_; }

  /// Holds the value as if it were stored by `XmlEscape` and read by `XmlUnescape`.
  void SetValue(SharedText value);

  [[nodiscard]] quenmar::Parameters& Parameters() { return parameters_; }
  [[nodiscard]] const quenmar::Parameters& Parameters() const { return parameters_; }

 private:
  friend class Fields;

  SharedText name_;
  SharedText value_;
  quenmar::Parameters parameters_;
  Fields* owner_ = nullptr;  // told of a new name; null when the field stands in no collection
  bool isFirst_ = false;     // known to be the first one of its name in there
};

}  // namespace quenmar
