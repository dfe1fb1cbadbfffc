#include <gtest/gtest.h>

#include "basic/run_time_error.h"
#include "platform/runtime.h"
#include "support/fixed_clock.h"
#include "support/scripted_host.h"

namespace tolva::platform {
namespace {

class GridScreen : public Screen {
  public:
    explicit GridScreen(Runtime& runtime) : Screen(runtime, "grids", "Grids") {}
    Grid grid{*this, "grid", 3};
};

class GridTest : public testing::Test {
  protected:
    support::ScriptedHost host;
    support::FixedClock clock{{2026, 11, 20, 8, 0, 0}};
    Runtime runtime{host, clock};
    GridScreen screen{runtime};
    Grid& grid = screen.grid;
};

TEST_F(GridTest, BeginsWithAHeadingAndOneBlankRow) {
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.cell(1, 0), "");
}

TEST_F(GridTest, TabsPartTheCellsOfAnItem) {
    grid.AddItem("1\tSmith");
    EXPECT_EQ(grid.cell(2, 0), "1");
    EXPECT_EQ(grid.cell(2, 1), "Smith");
    EXPECT_EQ(grid.cell(2, 2), "");
}

TEST_F(GridTest, CellsBeyondTheLastColumnAreDropped) {
    grid.AddItem("1\t2\t3\t4");
    EXPECT_EQ(grid.cell(2, 2), "3");
}

TEST_F(GridTest, ANewlyFilledGridReportsRowOne) {
    for (int row = 0; row < 5; ++row)
        grid.AddItem(std::to_string(row));
    grid.RemoveItem(1);
    grid.Row = 0;
    EXPECT_EQ(grid.RowSel(), 1);
}

TEST_F(GridTest, EmptyingBelowTheSelectionKeepsItOnABodyRow) {
    for (int row = 0; row < 5; ++row)
        grid.AddItem(std::to_string(row));
    runtime.click_row(grid, 6);
    EXPECT_EQ(grid.RowSel(), 6);
    while (grid.Rows() > 2)
        grid.RemoveItem(1);
    EXPECT_EQ(grid.RowSel(), 1);
}

TEST_F(GridTest, TheLastBodyRowCannotBeRemoved) {
    EXPECT_THROW(grid.RemoveItem(1), basic::RunTimeError);
    EXPECT_EQ(grid.Rows(), 2);
}

TEST_F(GridTest, AClickOnTheHeadingDoesNothing) {
    int clicks = 0;
    grid.on_click = [&] { ++clicks; };
    runtime.click_row(grid, 0);
    EXPECT_EQ(clicks, 0);
    runtime.click_row(grid, 1);
    EXPECT_EQ(clicks, 1);
}

} // namespace
} // namespace tolva::platform
