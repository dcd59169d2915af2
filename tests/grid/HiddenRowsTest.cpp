#include <gtest/gtest.h>

#include "grid/xEditGrid.h"

namespace quenmar {
namespace {

TEST(HiddenRows, ArePassedOverAndNotEdited) {
  xEditGridEvents events;
  xEditGrid grid(events);
  grid.SetRows(7);
  grid.ClickCell(3, 1);
  grid.SetHiddenRows({true, false, true, false, true, true, false});
  EXPECT_EQ(grid.State(), xEditGrid::EditState::kText);  // its row is visible
  for (const auto& [key, row] :
       {std::pair(xEditGrid::kKeyDown, 6), std::pair(xEditGrid::kKeyDown, 6),
        std::pair(xEditGrid::kKeyUp, 3), std::pair(xEditGrid::kKeyUp, 1),
        std::pair(xEditGrid::kKeyUp, 1)}) {
    grid.EditorKeyDown(key);
    EXPECT_EQ(grid.Row(), row);
    EXPECT_EQ(grid.State(), xEditGrid::EditState::kText);
  }
  for (const auto& [hidden, row] :
       {std::pair(std::vector<bool>{false, true, true}, 3),
        std::pair(std::vector<bool>{false, false, false, true, true, true, true}, 2)}) {
    grid.SetHiddenRows(hidden);
    EXPECT_EQ(grid.Row(), row);
    EXPECT_EQ(grid.State(), xEditGrid::EditState::kIdle);
  }
  grid.SetHiddenRows(std::vector<bool>(7, true));
  EXPECT_FALSE(grid.TakesText());
  grid.StartEdit();
  EXPECT_EQ(grid.State(), xEditGrid::EditState::kIdle);
  grid.Clear();
  EXPECT_FALSE(grid.IsRowHidden(2));
}

}  // namespace
}  // namespace quenmar
