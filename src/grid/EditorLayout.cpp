#include "grid/EditorLayout.h"

#include <algorithm>

namespace quenmar {

namespace {

// On each side a part has one half of what its size leaves free; only the grid stays clear of the
// frame's caption.
constexpr int kFrameLeft = 90;
constexpr int kFrameTop = 200;
constexpr int kGridLeft = 50;
constexpr int kBesideFind = 60;  // above and below
constexpr int kButtonMargin = 20;

int GridHeight(int frameHeight, int commentsHeight, LayoutMode mode) {
  switch (mode) {
    case LayoutMode::kSettings:
      return std::max(0, frameHeight - commentsHeight - 640);
    case LayoutMode::kSeries:
      return (frameHeight + 4) / 8;
    case LayoutMode::kSettingsAndSeries:
      return (frameHeight * 17 + 15) / 30;  // a third times 1.7, to the nearest twip
  }
  return 0;
}

}  // namespace

LayoutRectangle ToPixels(const LayoutRectangle& twips) {
  const int left = ToPixels(twips.left);
  const int top = ToPixels(twips.top);
  return {left, top, ToPixels(twips.Right()) - left, ToPixels(twips.Bottom()) - top};
}

EditorLayout EditorLayout::Of(LayoutSize window, int commentsHeight, LayoutSize command3,
                              LayoutSize command4, LayoutMode mode, int findHeight) {
  EditorLayout layout;
  layout.window = {std::max(window.width, kSmallestWindow.width),
                   std::max(window.height, kSmallestWindow.height)};
  const int frameWidth = layout.window.width - 180;
  const int frameHeight = layout.window.height - 400;
  layout.Frame1 = {kFrameLeft, kFrameTop, frameWidth, frameHeight};

  const int gridWidth = frameWidth - 100;
  const int gridHeight = GridHeight(frameHeight, commentsHeight, mode);
  layout.xEDG = {kGridLeft, kGridTop, gridWidth, gridHeight};
  if (findHeight > 0) {
    layout.pnlFind = {kGridLeft, kGridTop + kBesideFind, gridWidth, findHeight};
    const int taken = std::min(findHeight + 2 * kBesideFind, gridHeight);
    layout.xEDG.top += taken;
    layout.xEDG.height -= taken;
  }
  layout.Comments = {kGridLeft, layout.xEDG.Bottom() + 10, gridWidth, commentsHeight};

  int buttonTop = layout.Comments.Bottom() + 20;
  if (mode != LayoutMode::kSettings) {
    const int seriesHeight = std::max(0, frameHeight - gridHeight - commentsHeight - 680);
    layout.TSeries = {kGridLeft, layout.Comments.Bottom() + 10, gridWidth, seriesHeight};
    layout.lstSeries = {gridWidth - 140, std::max(0, seriesHeight - 450)};
    buttonTop = layout.TSeries.Bottom() + 20;
  }
  layout.Command3 = {kButtonMargin, buttonTop, command3.width, command3.height};
  layout.Command4 = {frameWidth - command4.width - kButtonMargin, buttonTop, command4.width,
                     command4.height};
  return layout;
}

}  // namespace quenmar
