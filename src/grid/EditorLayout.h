/// The places of the editor window's controls, in twips.
#pragma once

namespace quenmar {

inline constexpr int kTwipsPerPixel = 15;  ///< of a logical pixel

[[nodiscard]] constexpr int ToTwips(int pixels) { return pixels * kTwipsPerPixel; }

/// @return the nearest pixel.
[[nodiscard]] constexpr int ToPixels(int twips) {
  const int half = kTwipsPerPixel / 2;
  return (twips < 0 ? twips - half : twips + half) / kTwipsPerPixel;
}

/// What the window shows besides the comments box and the buttons.
enum class LayoutMode {
  kSettings = 0,           ///< the grid; there are no series
  kSeries = 1,             ///< the series; the grid has its header only
  kSettingsAndSeries = 2,  ///< both
};

/// @param gridRows the rows of the grid, its header row included
[[nodiscard]] constexpr LayoutMode LayoutModeOf(bool hasSeries, int gridRows) {
  if (!hasSeries) return LayoutMode::kSettings;
  return gridRows > 1 ? LayoutMode::kSettingsAndSeries : LayoutMode::kSeries;
}

struct LayoutSize {
  int width = 0;
  int height = 0;

  bool operator==(const LayoutSize&) const = default;
};

struct LayoutRectangle {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  [[nodiscard]] constexpr int Right() const { return left + width; }
  [[nodiscard]] constexpr int Bottom() const { return top + height; }
  bool operator==(const LayoutRectangle&) const = default;
};

/// @return the rectangle whose edges are the nearest pixels, so that neighbours still touch.
[[nodiscard]] LayoutRectangle ToPixels(const LayoutRectangle& twips);

/// The window's parts. No size is ever negative, however high the comments box is.
struct EditorLayout {
  static constexpr LayoutSize kSmallestWindow{5000, 5400};
  static constexpr int kGridTop = 120;  ///< of the grid, or of what is above it

  LayoutSize window;        ///< never below the smallest window
  LayoutRectangle Frame1;   ///< within the window
  LayoutRectangle pnlFind;  ///< within `Frame1`, as is all that follows but the list boxes; empty
                            ///< while the find bar is hidden
  LayoutRectangle xEDG;
  LayoutRectangle Comments;
  LayoutRectangle TSeries;   ///< the tab strip; empty without series
  LayoutSize lstSeries;      ///< of every list box, as far as the tabs leave it; 0 without series
  LayoutRectangle Command3;  ///< Apply
  LayoutRectangle Command4;  ///< Close

  /// @param window the size that the user gave the window
  /// @param commentsHeight of the comments box, which no resizing changes
  /// @param command3, command4 the sizes of the two buttons
  /// @param findHeight of the find bar, for which the grid makes room; 0 while it is hidden
  [[nodiscard]] static EditorLayout Of(LayoutSize window, int commentsHeight, LayoutSize command3,
                                       LayoutSize command4, LayoutMode mode, int findHeight = 0);
};

}  // namespace quenmar
