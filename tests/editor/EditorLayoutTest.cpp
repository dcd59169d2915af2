#include "editor/EditorLayout.h"

#include <gtest/gtest.h>

namespace quenmar {
namespace {

constexpr LayoutSize kButton{1200, 400};

TEST(EditorLayoutTest, SharesTheFrameOutByMode) {
  const struct {
    LayoutMode mode;
    int gridHeight, seriesHeight;
  } cases[] = {{LayoutMode::kSettings, 7960, 0},
               {LayoutMode::kSeries, 1200, 6720},
               {LayoutMode::kSettingsAndSeries, 5440, 2480}};
  for (const auto& expected : cases) {
    const EditorLayout layout =
        EditorLayout::Of({9180, 10000}, 1000, kButton, kButton, expected.mode);
    EXPECT_EQ(layout.Frame1.width, 9000);
    EXPECT_EQ(layout.Frame1.height, 9600);
    EXPECT_EQ(layout.xEDG.width, 8900);
    EXPECT_EQ(layout.xEDG.height, expected.gridHeight);
    EXPECT_EQ(layout.Comments, (LayoutRectangle{layout.xEDG.left, layout.xEDG.Bottom() + 10,
                                                layout.xEDG.width, 1000}));
    EXPECT_EQ(layout.TSeries.height, expected.seriesHeight);
    const bool series = expected.mode != LayoutMode::kSettings;
    if (series) {
      EXPECT_EQ(layout.TSeries.top, layout.Comments.Bottom() + 10);
      EXPECT_EQ(layout.lstSeries.width, layout.TSeries.width - 140);
      EXPECT_EQ(layout.lstSeries.height, layout.TSeries.height - 450);
    }
    const LayoutRectangle& lowest = series ? layout.TSeries : layout.Comments;
    EXPECT_EQ(layout.Command3.top, lowest.Bottom() + 20);
    EXPECT_EQ(layout.Command4, (LayoutRectangle{7780, layout.Command3.top, 1200, 400}));
    EXPECT_LE(layout.Command3.Bottom(), layout.Frame1.height);
  }
}

TEST(EditorLayoutTest, NeverFallsBelowTheSmallestWindow) {
  const auto windowOf = [](LayoutSize size, int commentsHeight) {
    return EditorLayout::Of(size, commentsHeight, kButton, kButton, LayoutMode::kSettingsAndSeries);
  };
  EXPECT_EQ(windowOf({4999, 5401}, 900).window, (LayoutSize{5000, 5401}));
  EXPECT_EQ(windowOf({5001, 0}, 900).window, (LayoutSize{5001, 5400}));
  EXPECT_EQ(windowOf({0, 0}, 900).xEDG.height, 2833);
  EXPECT_EQ(windowOf({0, 0}, 1400).lstSeries.height, 0);
  EXPECT_EQ(windowOf({0, 0}, 9000).TSeries.height, 0);
}

TEST(EditorLayoutTest, ChoosesTheModeByContent) {
  EXPECT_EQ(LayoutModeOf(false, 1), LayoutMode::kSettings);
  EXPECT_EQ(LayoutModeOf(false, 9), LayoutMode::kSettings);
  EXPECT_EQ(LayoutModeOf(true, 1), LayoutMode::kSeries);
  EXPECT_EQ(LayoutModeOf(true, 2), LayoutMode::kSettingsAndSeries);
}

TEST(EditorLayoutTest, ConvertsEdgesToTheNearestPixel) {
  EXPECT_EQ(ToTwips(20), 300);
  EXPECT_EQ(ToPixels(307), 20);
  EXPECT_EQ(ToPixels(308), 21);
  EXPECT_EQ(ToPixels(-8), -1);
  EXPECT_EQ(ToPixels(LayoutRectangle{8, 0, 23, 16}), (LayoutRectangle{1, 0, 1, 1}));
}

}  // namespace
}  // namespace quenmar
