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

  /// Throws `DocError` 32 or 33 and keeps the old name when `name` contains a blank, "<", ">" or a
  /// double quote.
  void SetName(SharedText name);

  /// @return the value as it was written, except that entity forms in it (such as "&lt;") are
  /// replaced by their characters.
  [[nodiscard]] const SharedText& Value() const { return value_; }

  /// Stores the value as `XmlEscape` and then `XmlUnescape` return it.
  void SetValue(SharedText value);

  [[nodiscard]] quenmar::Parameters& Parameters() { return parameters_; }
  [[nodiscard]] const quenmar::Parameters& Parameters() const { return parameters_; }

 private:
  friend class Fields;

  SharedText name_;
  SharedText value_;
  quenmar::Parameters parameters_;
  Fields* owner_ = nullptr;  // is notified of a new name; null when the field is in no collection
  bool isFirst_ = false;     // known to be the first one of its name in there
};

}  // namespace quenmar
