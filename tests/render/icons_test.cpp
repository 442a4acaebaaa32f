// Item pictures, drawn at (100, 100) on black and read back.
#include "render/icons.h"

#include <gtest/gtest.h>

#include "core/tiles.h"
#include "render/render_support.h"

namespace {

constexpr int X = 100, Y = 100;

// Two thirds of a size is (2 * s) / 3: column 5 at size 8, where 2 * (s / 3) gives 4.
TEST(Icons, BlockEdgesAndTwoThirdsLines) {
    Canvas c;
    draw_item(c.renderer, TILE_DIRT, X, Y, 16, 0);
    draw_item(c.renderer, TILE_WOOD, X + 20, Y, 8, 0);
    draw_item(c.renderer, TILE_STONE_BRICK, X + 40, Y, 8, 0);
    c.expect({{X + 10, Y + 10, rgb(116, 78, 53)}, {X + 10, Y + 1, rgb(220, 220, 220)}, {X + 1, Y + 15, rgb(74, 47, 39)},
              {X + 10, Y + 2, rgb(116, 78, 53)}, {X, Y, rgb(74, 47, 39)}, {X + 16, Y + 16, 0},  // dirt at 16
              {X + 24, Y + 4, rgb(133, 84, 45)}, {X + 25, Y + 4, rgb(188, 125, 59)},       // wood line
              {X + 44, Y + 6, rgb(114, 118, 132)}, {X + 45, Y + 6, rgb(59, 63, 76)}});     // brick seam
}

TEST(Icons, OreSpecksMoveWithTheVariation) {
    constexpr std::uint32_t speck = rgb(25, 27, 35), bright = rgb(115, 118, 127);
    Canvas c;
    draw_item(c.renderer, TILE_COAL, X, Y, 16, 5);       // first speck at (x + 7, y + 4)
    draw_item(c.renderer, TILE_COAL, X + 20, Y, 16, 0);  // all three at (x + 2, y + 3)
    draw_item(c.renderer, TILE_IRON_ORE, X + 40, Y, 5, 0x12345678u);  // no room for specks to move
    EXPECT_EQ(c.count(X + 2, Y, 14, 16, speck), 9);
    EXPECT_EQ(c.count(X + 7, Y + 4, 3, 3, speck), 9);
    EXPECT_EQ(c.count(X + 22, Y + 3, 3, 3, bright), 9);  // the bright speck is drawn last
    EXPECT_EQ(c.count(X + 22, Y, 14, 16, speck), 0);
    EXPECT_EQ(c.at(X + 43, Y + 3), rgb(105, 110, 124));
}

TEST(Icons, TorchAndPickStandWithoutABlock) {
    constexpr std::uint32_t handle = rgb(109, 67, 37);
    Canvas c;
    draw_item(c.renderer, TILE_TORCH, X, Y, 16, 0);
    draw_item(c.renderer, ITEM_WORN_PICK, X + 20, Y, 16, 0);
    c.expect({{X + 8, Y + 14, rgb(105, 62, 36)}, {X + 5, Y + 6, rgb(255, 171, 47)}, {X + 8, Y + 2, rgb(255, 244, 126)},
              {X + 8, Y + 15, 0}, {X, Y, 0}, {X + 15, Y + 15, 0}});
    EXPECT_EQ(c.count(X + 20, Y, 16, 16, handle), 11);  // 13 points, two under the head
    c.expect({{X + 23, Y + 14, handle}, {X + 35, Y + 2, handle}, {X + 21, Y + 6, rgb(151, 157, 166)}, {X + 20, Y, 0}});
}

}  // namespace
