#pragma once

#include "text/String.h"

namespace quenmar {

/// What the conf writer needs to see of a window's series lists: ordered groups, one per tab, each
/// with a caption and ordered items that are checked or not. Indexes count from 0.
class SeriesView {
 public:
  SeriesView() = default;
  virtual ~SeriesView() = default;

  [[nodiscard]] virtual int GroupCount() const = 0;
  [[nodiscard]] virtual String TabCaption(int group) const = 0;
  [[nodiscard]] virtual int ItemCount(int group) const = 0;
  [[nodiscard]] virtual String List(int group, int item) const = 0;
  [[nodiscard]] virtual bool Selected(int group, int item) const = 0;

 protected:
  SeriesView(const SeriesView&) = default;
  SeriesView& operator=(const SeriesView&) = default;
};

}  // namespace quenmar
