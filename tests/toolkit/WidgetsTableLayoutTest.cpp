#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/lists/TableLayout.h"

#include <gtest/gtest.h>

#include <limits>

namespace oribund::test
{
namespace
{

/** Three columns of 50, 60 and what is left of 202 pixels; a header of 20 and rows of 10. */
class TableGeometry : public testing::Test
{
protected:
    TableGeometry()
    {
        layout.setSize({202, 122});
        layout.setHeaderHeight(20);
        layout.setColumns({{"a", 50, 20}, {"b", 60, 20}, {"c", 10, 30}});
        layout.setRows(5, 10);
    }

    std::vector<int> widths() const
    {
        return {layout.getColumnWidth(0), layout.getColumnWidth(1), layout.getColumnWidth(2)};
    }

    TableLayout layout;
};

TEST_F(TableGeometry, TheLastColumnTakesTheRestAndGivesWayToTheOthersOnlyToItsMinimum)
{
    EXPECT_EQ(widths(), (std::vector{50, 60, 90}));
    EXPECT_TRUE(layout.setColumnWidth(0, 500));
    EXPECT_EQ(widths(), (std::vector{110, 60, 30}));
    EXPECT_TRUE(layout.setColumnWidth(0, -7));
    EXPECT_EQ(widths(), (std::vector{20, 60, 120}));
    EXPECT_FALSE(layout.setColumnWidth(2, 50));
    layout.setSize({92, 122});
    EXPECT_EQ(widths(), (std::vector{20, 40, 30})) << "the nearest gives up first";
    layout.setSize({0, 0});
    EXPECT_EQ(widths(), (std::vector{20, 20, 30}));
    EXPECT_TRUE(layout.bodyBox().empty());
    layout.setSize({202, 122});
    EXPECT_EQ(widths(), (std::vector{20, 60, 120})) << "what was narrow for want of room is wide again";
    layout.setColumnWidth(1, 70);
    layout.setColumns({{"b", 60, 20}, {"a", 55, 20}, {"c", 10, 30}});
    EXPECT_EQ(widths(), (std::vector{70, 20, 110})) << "a width stays with the name of its column";
}

TEST_F(TableGeometry, PointsAndCellsAgree)
{
    EXPECT_EQ(layout.cellBox({1, 2}), (Kt::Box<int>{51, 41, 111, 51}));
    EXPECT_EQ(layout.cellAt({51, 41}), (XY<int>{1, 2}));
    EXPECT_EQ(layout.cellAt({110, 50}), (XY<int>{1, 2}));
    EXPECT_EQ(layout.cellAt({111, 50}), (XY<int>{2, 2}));
    EXPECT_EQ(layout.cellAt({51, 71}), TableLayout::kNoCell) << "below the last row";
    EXPECT_EQ(layout.cellAt({51, 20}), TableLayout::kNoCell) << "in the header";
    EXPECT_EQ(layout.edgeAt({52, 10}), 0);
    EXPECT_EQ(layout.edgeAt({111, 30}), -1);
    EXPECT_EQ(layout.edgeAt({201, 10}), -1) << "the last column ends with the table";
}

TEST_F(TableGeometry, AHundredThousandRowsAreScrolledThrough)
{
    EXPECT_TRUE(layout.scrollBarBox().empty());
    layout.setRows(100000, 10);
    EXPECT_EQ(layout.bodyBox().right, 201 - UifStd::getScrollBarWidth());
    EXPECT_EQ(layout.rowsInView(), std::pair(0, 10));
    EXPECT_TRUE(layout.scrollTo(99999));
    EXPECT_EQ(layout.getScroll(), layout.getMaxScroll());
    EXPECT_EQ(layout.rowsInView(), std::pair(99990, 100000));
    EXPECT_EQ(layout.cellAt({51, 120}), (XY<int>{1, 99999}));
    EXPECT_FALSE(layout.scrollTo(99995)) << "in view already";
    layout.setScroll(15);
    EXPECT_EQ(layout.rowsInView(), std::pair(1, 12)) << "parts of rows count";
    layout.setRows(3, 10);
    EXPECT_EQ(layout.getScroll(), 0);
    layout.setRows(std::numeric_limits<int>::max(), 1000);
    layout.scrollTo(layout.getNumRows() - 1);
    EXPECT_GT(layout.cellBox({0, layout.getNumRows() - 1}).bottom, 0) << "no overflow";
}

} // namespace
} // namespace oribund::test
