// Rectangles and the bitmap font, read back pixel by pixel.
#include <gtest/gtest.h>

#include "render/draw.h"
#include "render/render_support.h"

namespace {

constexpr std::uint32_t WHITE = 0xFFFFFFFFu;

// The 6 x 7 cell at (x, y) shows `picture` (its sixth column always dark).
void expect_glyph(Canvas& c, int x, int y, int scale, const char* const (&picture)[7]) {
    for (int r = 0; r < 7; ++r)
        for (int k = 0; k < 6 * scale; ++k) {
            const bool lit = k / scale < 5 && picture[r][k / scale] == '#';
            for (int dy = 0; dy < scale; ++dy)
                EXPECT_EQ(c.at(x + k, y + r * scale + dy), lit ? 0xFFFFFFu : 0u) << "row " << r << " col " << k;
        }
}

constexpr const char* A[7] = {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"};
constexpr const char* B[7] = {"####.", "#...#", "#...#", "####.", "#...#", "#...#", "####."};
constexpr const char* BLANK[7] = {".....", ".....", ".....", ".....", ".....", ".....", "....."};

TEST(Text, DrawsCellsOfSixWithLowerCaseAsUpperAndUnknownBytesBlank) {
    Canvas c;
    text(c.renderer, 10, 20, "A+b", WHITE, 1);
    expect_glyph(c, 10, 20, 1, A);
    expect_glyph(c, 16, 20, 1, BLANK);
    expect_glyph(c, 22, 20, 1, B);
    EXPECT_EQ(c.count(0, 0, 64, 64, 0xFFFFFFu), 18 + 20);

    Canvas big;
    text(big.renderer, 100, 50, "\nA", WHITE, 3);  // a newline is one more unknown byte
    expect_glyph(big, 100, 50, 3, BLANK);
    expect_glyph(big, 118, 50, 3, A);
}

// SDL draws an empty rectangle as a line; the game must draw nothing at all.
TEST(Fill, RectanglesWithoutAreaDrawNothing) {
    Canvas c;
    fill(c.renderer, 5, 5, 0, 10, WHITE);
    fill(c.renderer, 5, 5, 10, 0, WHITE);
    fill(c.renderer, 5, 5, -3, 10, WHITE);
    outline(c.renderer, 5, 5, 0, 10, WHITE);
    EXPECT_EQ(c.count(0, 0, 40, 40, 0xFFFFFFu), 0);
}

}  // namespace
