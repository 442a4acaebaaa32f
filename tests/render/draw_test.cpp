// Rectangles and the bitmap font, read back pixel by pixel.
#include "render/draw.h"

#include <gtest/gtest.h>

#include "render/render_support.h"

namespace {

constexpr std::uint32_t WHITE = 0xFFFFFFFFu;

// The 6 x 7 cell at (x, y) shows `picture`, its sixth column always dark.
void expect_glyph(Canvas& c, int x, int y, int scale, const char* const (&picture)[7]) {
    for (int r = 0; r < 7 * scale; ++r)
        for (int k = 0; k < 6 * scale; ++k) {
            const bool lit = k / scale < 5 && picture[r / scale][k / scale] == '#';
            EXPECT_EQ(c.at(x + k, y + r), lit ? 0xFFFFFFu : 0u) << "row " << r << " col " << k;
        }
}

// '+' and the newline are not in the font: blank cells that still advance the pen.
TEST(Text, CellsOfSixLowerCaseAsUpperUnknownBytesBlank) {
    constexpr const char* A[7] = {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"};
    constexpr const char* B[7] = {"####.", "#...#", "#...#", "####.", "#...#", "#...#", "####."};
    Canvas c;
    text(c.renderer, 10, 20, "A+b", WHITE, 1);
    text(c.renderer, 100, 50, "\nA", WHITE, 3);
    expect_glyph(c, 10, 20, 1, A);
    expect_glyph(c, 22, 20, 1, B);
    expect_glyph(c, 118, 50, 3, A);
    EXPECT_EQ(c.count(0, 0, 160, 80, 0xFFFFFFu), 18 + 20 + 18 * 9);
}

TEST(Text, CentredAndRightAlignedStarts) {
    EXPECT_EQ(centred_text_x("LOAD WORLD", 2), 261);      // 320 - (120 - 2) / 2
    EXPECT_EQ(centred_text_x("HI", 1), 315);              // half of 11 truncates
    EXPECT_EQ(right_aligned_text_x(630, "DAY 12"), 595);  // the last cell's dark column is 630
}

// SDL draws an empty rectangle as a line; the game draws nothing at all.
TEST(Fill, RectanglesWithoutAreaDrawNothing) {
    Canvas c;
    fill(c.renderer, 5, 5, 0, 10, WHITE);
    fill(c.renderer, 5, 5, 10, 0, WHITE);
    fill(c.renderer, 5, 5, -3, 10, WHITE);
    outline(c.renderer, 5, 5, 0, 10, WHITE);
    EXPECT_EQ(c.count(0, 0, 40, 40, 0xFFFFFFu), 0);
}

}  // namespace
