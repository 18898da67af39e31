#include <platform/linux/x11/windows/OutlineRows.h>

#include <gtest/gtest.h>

#include <cmath>

namespace tulvane {

namespace {

bool covers(const std::vector<xcb_rectangle_t>& rows, int x, int y)
{
    return std::ranges::any_of(rows, [x, y](const xcb_rectangle_t& row) {
        return x >= row.x && x < row.x + row.width && y >= row.y && y < row.y + row.height;
    });
}

int area(const std::vector<xcb_rectangle_t>& rows)
{
    int sum = 0;
    for (const xcb_rectangle_t& row : rows)
        sum += row.width * row.height;
    return sum;
}

TEST(OutlineRowsTest, CutsTheCornersOffAndNothingElse)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const auto rows = outlineRows({{60, 28, 196, 48}, 24}, scale);
        const int left = qRound(60 * scale);
        const int top = qRound(28 * scale);
        const int right = qRound(256 * scale) - 1;
        const int bottom = qRound(76 * scale) - 1;
        const int middle = (left + right) / 2;
        for (const auto& [x, y] :
             {std::pair(left, top), std::pair(right, top), std::pair(left, bottom), std::pair(right, bottom)})
            EXPECT_FALSE(covers(rows, x, y)) << x << "," << y << " at " << scale;
        EXPECT_TRUE(covers(rows, middle, top)) << scale;
        EXPECT_TRUE(covers(rows, middle, bottom)) << scale;
        EXPECT_TRUE(covers(rows, left, (top + bottom) / 2)) << scale;
        EXPECT_TRUE(covers(rows, right, (top + bottom) / 2)) << scale;
        EXPECT_FALSE(covers(rows, left - 1, (top + bottom) / 2));
        EXPECT_FALSE(covers(rows, middle, bottom + 1));
        // No pixel twice: the area is the round rectangle's.
        const double expected = (196 * 48 - (4 - M_PI) * 24 * 24) * scale * scale;
        EXPECT_NEAR(area(rows), expected, expected * 0.01) << scale;
    }
}

TEST(OutlineRowsTest, IsTheSameFromBothSides)
{
    const auto rows = outlineRows({{10, 10, 60, 48}, 24}, 1);
    for (int y = 10; y < 58; ++y) {
        for (int x = 10; x < 70; ++x)
            EXPECT_EQ(covers(rows, x, y), covers(rows, 79 - x, 67 - y)) << x << "," << y;
    }
}

TEST(OutlineRowsTest, ARadiusBeyondTheHalfAndAnEmptyOutlineAreHarmless)
{
    const auto circle = outlineRows({{0, 0, 40, 40}, 100}, 1);
    EXPECT_NEAR(area(circle), M_PI * 20 * 20, 20);
    EXPECT_TRUE(outlineRows({{5, 5, 0, 10}, 3}, 1).empty());
    const auto square = outlineRows({{1, 2, 30, 20}, 0}, 1);
    ASSERT_EQ(square.size(), 1);
    EXPECT_EQ(area(square), 600);
}

} // namespace

} // namespace tulvane
