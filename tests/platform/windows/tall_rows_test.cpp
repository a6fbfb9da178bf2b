// Scrolling through rows of different heights: no key passes over lines that have not been seen.
#include "platform/windows/forms/tall_rows.h"

#include <doctest.h>

#include <set>

using vellumo::windows::TallRows;
using Step = TallRows::Step;

namespace
{

constexpr int line = 10;
constexpr int view = 100;

TallRows MakeRows(const std::vector<int>& heights)
{
    TallRows rows;
    rows.SetHeights(heights);
    rows.SetView(view, line);
    return rows;
}

// Presses one key until it leads no further; returns how much of all the rows has been in view.
int SeenWith(TallRows& rows, Step step)
{
    std::set<int> seen;
    std::optional<std::size_t> row = rows.Move(step == Step::Up || step == Step::PageUp ? Step::Last : Step::First, {});
    for (int presses = 0; presses < 1000; ++presses)
    {
        for (int y = 0; y < rows.ViewHeight(); ++y)
        {
            seen.insert(rows.Scroll() + y);
        }
        row = rows.Move(step, row);
        REQUIRE(row);
        // The operator always sees the row that he is on.
        CHECK(rows.Top(*row) < rows.ViewHeight());
        CHECK(rows.Bottom(*row) > 0);
    }
    CHECK(row == (step == Step::Up || step == Step::PageUp ? 0 : rows.Count() - 1));
    return static_cast<int>(seen.size());
}

} // namespace

TEST_SUITE("rows of different heights")
{
    TEST_CASE("each key alone shows everything, tall rows to their end")
    {
        const std::vector<std::vector<int>> cases = {
            {20, 20, 20, 20, 20, 20, 20}, {30, 450, 20, 20, 100, 101, 99, 20}, {450}, {20, 300}, {300, 20}};
        for (const auto& heights : cases)
        {
            for (const Step step : {Step::Down, Step::Up, Step::PageDown, Step::PageUp})
            {
                TallRows rows = MakeRows(heights);
                CAPTURE(heights.size());
                CAPTURE(static_cast<int>(step));
                CHECK(SeenWith(rows, step) == rows.TotalHeight());
            }
        }
    }

    TEST_CASE("the row at the top stays there when the heights change, and the end stays at the bottom")
    {
        TallRows rows = MakeRows(std::vector<int>(50, 20));
        rows.ScrollTo(410);
        rows.SetHeights(std::vector<int>(50, 40));
        CHECK(rows.RowAt(0) == 20);
        rows.ScrollTo(100000);
        CHECK(rows.Bottom(49) == view);
        rows.SetHeights({20, 20});
        CHECK(rows.Scroll() == 0);
        CHECK_FALSE(rows.RowAt(40));
        rows.SetHeights({});
        CHECK_FALSE(rows.Move(Step::Down, {}));
    }
}
