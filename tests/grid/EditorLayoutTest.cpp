#include "grid/EditorLayout.h"

#include <gtest/gtest.h>

namespace quenmar {
namespace {

EditorLayout LayoutOf(LayoutSize window, int commentsHeight,
                      LayoutMode mode = LayoutMode::kSettingsAndSeries, int findHeight = 0) {
  return EditorLayout::Of(window, commentsHeight, {1300, 400}, {1200, 400}, mode, findHeight);
}

TEST(EditorLayoutTest, SharesTheFrameOutByMode) {
  const EditorLayout both = LayoutOf({9180, 10000}, 1000);
  EXPECT_EQ(both.Frame1, (LayoutRectangle{90, 200, 9000, 9600}));
  EXPECT_EQ(both.xEDG, (LayoutRectangle{50, 120, 8900, 5440}));
  EXPECT_EQ(both.TSeries, (LayoutRectangle{50, 6580, 8900, 2480}));
  EXPECT_EQ(both.lstSeries, (LayoutSize{8760, 2030}));
  EXPECT_EQ(both.Command4, (LayoutRectangle{7780, 9080, 1200, 400}));
  const EditorLayout series = LayoutOf({9180, 10000}, 1000, LayoutMode::kSeries);
  EXPECT_EQ(series.TSeries, (LayoutRectangle{50, 2340, 8900, 6720}));
  const EditorLayout settings = LayoutOf({9180, 10000}, 1000, LayoutMode::kSettings);
  EXPECT_EQ(settings.TSeries, LayoutRectangle{});
  EXPECT_EQ(settings.Command3, (LayoutRectangle{20, 9110, 1300, 400}));
  const EditorLayout found = LayoutOf({9180, 10000}, 1000, LayoutMode::kSettingsAndSeries, 400);
  EXPECT_EQ(found.pnlFind, (LayoutRectangle{50, 180, 8900, 400}));
  EXPECT_EQ(found.xEDG, (LayoutRectangle{50, 640, 8900, 4920}));
  EXPECT_EQ(found.Comments, both.Comments);
}

TEST(EditorLayoutTest, NeverFallsBelowTheSmallestWindow) {
  EXPECT_EQ(LayoutOf({4999, 5401}, 900).window, (LayoutSize{5000, 5401}));
  EXPECT_EQ(LayoutOf({5001, 0}, 900).xEDG.height, 2833);
  EXPECT_EQ(LayoutOf({0, 0}, 1400).lstSeries.height, 0);
  EXPECT_EQ(LayoutOf({0, 0}, 9000).TSeries.height, 0);
  EXPECT_EQ(ToPixels(LayoutRectangle{8, -8, 23, 315}), (LayoutRectangle{1, -1, 1, 21}));
}

}  // namespace
}  // namespace quenmar
