#include <gtest/gtest.h>

#include "sim/movement.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::fill_tiles;

struct Box { float x, y, vx, vy; std::uint8_t on_ground; float w, h; };

// An open space (columns 100..140, rows 60..100) walled with STONE.
struct MoveBox : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override { fixtures::arena(g, 100, 60, 140, 100); }
    void move(Box& b) { move_box(&g, &b.x, &b.y, &b.vx, &b.vy, &b.on_ground, b.w, b.h, 0.05f); }
};

}  // namespace

TEST_F(MoveBox, FastBoxesStopShortOfAOneTileFloorOrWallWithoutSnapping) {
    fill_tiles(g, 100, 80, 140, 80, TILE_STONE);  // floor, top at y 1280
    fill_tiles(g, 120, 60, 120, 79, TILE_STONE);  // wall, left side at x 1920
    Box faller{1650.0f, 1200.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f};
    Box runner{1800.0f, 1250.0f, 0.0f, 0.0f, 0, 14.0f, 14.0f};
    for (int i = 0; i < 60; ++i) {
        faller.vy = runner.vx = 390.0f;
        move(faller);
        move(runner);
        ASSERT_LT(faller.y + faller.h, 1280.0f + 0.01f);
        ASSERT_LT(runner.x + runner.w, 1920.0f + 0.01f);
    }
    // Stopped within one sub-step of the surface, that axis zeroed, and not snapped flush to it.
    EXPECT_TRUE(faller.vy == 0.0f && faller.on_ground == 1 && faller.y + faller.h > 1277.0f);
    EXPECT_NE(faller.y + faller.h, 1280.0f);
    EXPECT_TRUE(runner.vx == 0.0f && runner.on_ground == 0 && runner.x + runner.w > 1917.0f);
}

TEST_F(MoveBox, TheWholeRectangleLessTheEdgeMarginIsTested) {
    // Overlapping the floor row and moving up: only a whole-rectangle test keeps it.
    Box stuck{1608.0f, 1608.0f, 50.0f, -50.0f, 1, 14.0f, 14.0f};
    Box slider{1800.0f, 1616.0f - 26.0f, 100.0f, 30.0f, 0, 12.0f, 26.0f};  // flush on the floor
    move(stuck);
    move(slider);
    EXPECT_TRUE(stuck.x == 1608.0f && stuck.y == 1608.0f && stuck.on_ground == 0);
    EXPECT_TRUE(stuck.vx == 0.0f && stuck.vy == 0.0f);
    EXPECT_TRUE(slider.x == 1805.0f && slider.vx == 100.0f && slider.on_ground == 1);
}

TEST_F(MoveBox, TheWorldEdgeIsASolidWallOnAllFourSides) {
    fill_tiles(g, 0, 0, WORLD_W - 1, 5, TILE_EMPTY);
    fill_tiles(g, 0, WORLD_H - 6, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    fill_tiles(g, 0, 0, 5, WORLD_H - 1, TILE_EMPTY);
    fill_tiles(g, WORLD_W - 6, 0, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    Box boxes[] = {
        {1.0f, 40.0f, -100.0f, 0.0f, 0, 12.0f, 26.0f},  // column -1, not column 0, must block
        {8192.0f - 13.0f, 40.0f, 100.0f, 0.0f, 0, 12.0f, 26.0f},
        {40.0f, 1.0f, 0.0f, -200.0f, 1, 12.0f, 26.0f},
        {40.0f, 2560.0f - 30.0f, 0.0f, 390.0f, 0, 12.0f, 26.0f},
        {1.0f, 1.0f, -390.0f, -390.0f, 0, 8.0f, 8.0f},  // into the corner
    };
    for (Box& b : boxes) {
        move(b);
        EXPECT_TRUE(b.x >= 0.0f && b.x + b.w <= 8192.01f && b.y >= 0.0f && b.y + b.h <= 2560.01f);
        EXPECT_TRUE(b.vx == 0.0f && b.vy == 0.0f);
    }
    EXPECT_TRUE(boxes[0].x == 1.0f && boxes[2].y == 1.0f);
    EXPECT_TRUE(boxes[2].on_ground == 0 && boxes[3].on_ground == 1);  // stopped going up, stopped by row 160
}
