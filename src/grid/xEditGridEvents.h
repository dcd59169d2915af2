#pragma once

#include "text/String.h"

namespace quenmar {

/// The events of an `xEditGrid` for its owner. Rows and columns are copies made for the call:
/// assigning to them moves nothing. A handler may use the grid freely.
class xEditGridEvents {
 public:
  xEditGridEvents() = default;
  xEditGridEvents(const xEditGridEvents&) = delete;
  xEditGridEvents& operator=(const xEditGridEvents&) = delete;
  virtual ~xEditGridEvents() = default;

  /// An edit was started: an editor is over the current cell, or the cell cannot be edited.
  virtual void Click() {}

  /// The user's new value was stored in a cell.
  virtual void Change(int& /*Row*/, int& /*Col*/) {}

  /// The user's new value is about to be stored.
  /// @param Cancel false; set to true, it refuses the value
  /// @param NewValue the editor's text; the cell takes the editor's text, even if another value is
  /// assigned
  virtual void SureChange(bool& /*Cancel*/, String& /*NewValue*/, int& /*Row*/, int& /*Col*/) {}

  /// The grid was scrolled; its editors are hidden already.
  /// @param Row, Col the current cell
  virtual void Scroll(int& /*Row*/, int& /*Col*/) {}

  /// Another cell became the current one.
  virtual void RowColChange() {}
};

}  // namespace quenmar
