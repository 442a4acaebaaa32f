// Rectangles, the bitmap font and item pictures, read back pixel by pixel.
#include "render/draw.h"

#include "core/tiles.h"
#include "render/icons.h"
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
// Centring is on column 320, halves truncated. SDL draws an empty rectangle as a
// line; the game draws nothing at all.
TEST(Draw, TextLayoutAndEmptyRectangles) {
    constexpr const char* A[7] = {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"};
    Canvas c;
    text(c.renderer, 10, 20, "A+b", WHITE, 1);
    text(c.renderer, 100, 50, "\nA", WHITE, 3);
    for (const auto& [w, h] : {std::pair(0, 10), {10, 0}, {-3, 10}}) fill(c.renderer, 5, 5, w, h, WHITE);
    outline(c.renderer, 5, 5, 0, 10, WHITE);
    expect_glyph(c, 10, 20, 1, A);
    expect_glyph(c, 118, 50, 3, A);
    c.expect({{22, 20, 0xFFFFFFu}, {26, 20, 0}, {27, 20, 0}});  // B, from lower case, after one blank cell
    EXPECT_EQ(c.count(0, 0, 160, 80, 0xFFFFFFu), 18 + 20 + 18 * 9);
    EXPECT_EQ(centred_text_x("LOAD WORLD", 2), 261);      // 320 - (120 - 2) / 2
    EXPECT_EQ(centred_text_x("HI", 1), 315);              // half of 11 truncates
    EXPECT_EQ(right_aligned_text_x(630, "DAY 12"), 595);  // the last cell's dark column is 630
}

// Item pictures side by side on black. Two thirds of a size is (2 * s) / 3:
// column 5 at size 8, where 2 * (s / 3) gives 4; a torch stick 7 long at size 11. Ore specks move with the
// variation: at 5 the first is at (x + 7, y + 4), at 0 all three sit at (x + 2, y + 3).
TEST(Draw, ItemPictures) {
    constexpr int X = 100, Y = 100;
    constexpr std::uint32_t speck = rgb(25, 27, 35), handle = rgb(109, 67, 37);
    Canvas c;
    draw_item(c.renderer, TILE_DIRT, X, Y, 16, 0);
    draw_item(c.renderer, TILE_WOOD, X + 20, Y, 8, 0);
    draw_item(c.renderer, TILE_STONE_BRICK, X + 40, Y, 8, 0);
    c.expect({{X + 10, Y + 10, rgb(116, 78, 53)}, {X + 10, Y + 1, rgb(220, 220, 220)}, {X + 1, Y + 15, rgb(74, 47, 39)},
              {X + 10, Y + 2, rgb(116, 78, 53)}, {X, Y, rgb(74, 47, 39)}, {X + 16, Y + 16, 0},  // dirt at 16
              {X + 24, Y + 4, rgb(133, 84, 45)}, {X + 25, Y + 4, rgb(188, 125, 59)},       // wood line
              {X + 44, Y + 6, rgb(114, 118, 132)}, {X + 45, Y + 6, rgb(59, 63, 76)}});     // brick seam

    draw_item(c.renderer, TILE_COAL, X, Y + 20, 16, 5);
    draw_item(c.renderer, TILE_COAL, X + 20, Y + 20, 16, 0);
    draw_item(c.renderer, TILE_IRON_ORE, X + 40, Y + 20, 5, 0x12345678u);  // no room for specks to move
    EXPECT_EQ(c.count(X + 2, Y + 20, 14, 16, speck), 9);
    EXPECT_EQ(c.count(X + 7, Y + 24, 3, 3, speck), 9);
    EXPECT_EQ(c.count(X + 22, Y + 23, 3, 3, rgb(115, 118, 127)), 9);  // the bright speck is drawn last
    EXPECT_EQ(c.count(X + 22, Y + 20, 14, 16, speck), 0);
    EXPECT_EQ(c.at(X + 43, Y + 23), rgb(105, 110, 124));

    draw_item(c.renderer, TILE_TORCH, X, Y + 40, 16, 0);  // torch and pick stand without a block
    draw_item(c.renderer, ITEM_WORN_PICK, X + 20, Y + 40, 16, 0);
    draw_item(c.renderer, TILE_TORCH, X + 40, Y + 40, 11, 0);
    c.expect({{X + 8, Y + 54, rgb(105, 62, 36)}, {X + 5, Y + 46, rgb(255, 171, 47)},
              {X + 8, Y + 42, rgb(255, 244, 126)}, {X + 8, Y + 55, 0}, {X, Y + 40, 0}, {X + 15, Y + 55, 0},
              {X + 44, Y + 49, rgb(105, 62, 36)}, {X + 44, Y + 50, 0}});
    EXPECT_EQ(c.count(X + 20, Y + 40, 16, 16, handle), 11);  // 13 points, two under the head
    c.expect({{X + 23, Y + 54, handle}, {X + 35, Y + 42, handle}, {X + 21, Y + 46, rgb(151, 157, 166)},
              {X + 20, Y + 40, 0}});
}

}  // namespace
