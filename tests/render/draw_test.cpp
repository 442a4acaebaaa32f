// Rectangles and the bitmap font, read back pixel by pixel.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "render/draw.h"
#include "render/render_support.h"

namespace {

constexpr std::uint32_t WHITE = 0xFFFFFFFFu;

// Asserts that the 5 x 7 cell at (x, y) shows `picture` (rows top to bottom).
void expect_glyph(Canvas& c, int x, int y, int scale, const char* const (&picture)[7], const char* what) {
    for (int r = 0; r < 7; ++r)
        for (int k = 0; k < 6; ++k) {
            const bool lit = k < 5 && picture[r][k] == '#';
            for (int dy = 0; dy < scale; ++dy)
                for (int dx = 0; dx < scale; ++dx)
                    EXPECT_EQ(c.at(x + k * scale + dx, y + r * scale + dy), lit ? 0xFFFFFFu : 0u)
                        << what << " row " << r << " col " << k;
        }
}

constexpr const char* PICTURE_A[7] = {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"};
constexpr const char* PICTURE_B[7] = {"####.", "#...#", "#...#", "####.", "#...#", "#...#", "####."};
constexpr const char* BLANK[7] = {".....", ".....", ".....", ".....", ".....", ".....", "....."};

TEST(Text, DrawsGlyphsCellByCellWithBlankCellsForMissingCharacters) {
    Canvas c;
    text(c.renderer, 10, 20, "A+b", WHITE, 1);
    expect_glyph(c, 10, 20, 1, PICTURE_A, "A");
    expect_glyph(c, 16, 20, 1, BLANK, "+");
    expect_glyph(c, 22, 20, 1, PICTURE_B, "lower-case b");
    EXPECT_EQ(c.count(0, 0, VIEW_W, VIEW_H, 0xFFFFFFu), 18 + 20);  // nothing outside the cells
}

TEST(Text, ScaleDrawsSquaresAndAdvancesBySixTimesScale) {
    Canvas c;
    text(c.renderer, 100, 50, "\nA", WHITE, 3);  // a newline is just an unknown byte
    expect_glyph(c, 100, 50, 3, BLANK, "newline");
    expect_glyph(c, 118, 50, 3, PICTURE_A, "A at scale 3");
}

TEST(Text, EmptyStringDrawsNothingButLeavesTheColourSet) {
    Canvas c;
    text(c.renderer, 0, 0, "", 0x80C0A020u, 1);
    Uint8 r = 0, g = 0, b = 0, a = 0;
    SDL_GetRenderDrawColor(c.renderer, &r, &g, &b, &a);
    EXPECT_EQ((std::uint32_t{r} << 24) | (std::uint32_t{g} << 16) | (std::uint32_t{b} << 8) | a, 0x20A0C080u);
    EXPECT_EQ(c.count(0, 0, VIEW_W, VIEW_H, 0), VIEW_W * VIEW_H);
}

// SDL draws an empty rectangle as a line; the game must draw nothing at all.
TEST(Fill, RectanglesWithoutAreaDrawNothing) {
    Canvas c;
    fill(c.renderer, 5, 5, 0, 10, WHITE);
    fill(c.renderer, 5, 5, 10, 0, WHITE);
    fill(c.renderer, 5, 5, -3, 10, WHITE);
    outline(c.renderer, 5, 5, 0, 10, WHITE);
    EXPECT_EQ(c.count(0, 0, 40, 40, 0xFFFFFFu), 0);
    fill(c.renderer, 5, 5, 2, 3, rgba(1, 2, 3));
    EXPECT_EQ(c.count(0, 0, 40, 40, rgb(1, 2, 3)), 6);
}

TEST(Text, CentringAndRightAlignment) {
    EXPECT_EQ(centred_text_x("TALVEN", 6), 215);
    EXPECT_EQ(centred_text_x("GLIMWICK", 2), 273);
    EXPECT_EQ(centred_text_x("", 1), 320);
    EXPECT_EQ(centred_text_x("ABCD", 1), 320 - 11);
    EXPECT_EQ(right_aligned_text_x(630, "QA WORLD  DAY 1"), 541);
    EXPECT_EQ(right_aligned_text_x(180, "12"), 169);
}

TEST(Font, HoldsTheCharacterSetInOrderWithWellFormedRows) {
    const std::string expected = std::string(" 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ") + "-.:!/<>?";
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(FONT_GLYPHS));
    for (int i = 0; i < FONT_GLYPHS; ++i) {
        EXPECT_EQ(FONT[i].ch, expected[static_cast<std::size_t>(i)]) << i;
        for (const char* row : FONT[i].rows) {
            ASSERT_EQ(std::strlen(row), 5u) << FONT[i].ch;
            EXPECT_EQ(std::strspn(row, "#."), 5u) << FONT[i].ch;
        }
    }
}

}  // namespace
