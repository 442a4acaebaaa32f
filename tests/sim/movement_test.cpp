#include <gtest/gtest.h>

#include <cmath>

#include "sim/movement.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::fill_tiles;

struct Box {
    float x, y, vx, vy;
    std::uint8_t on_ground;
    float w, h;
};

int cell(float v) { return static_cast<int>(std::floor(v / 16.0f)); }

// An open space (columns 100..140, rows 60..100) walled with STONE; its floor is
// row 101, whose top is at y 1616.
struct MoveBox : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override { fixtures::arena(g, 100, 60, 140, 100); }
    void move(Box& b, float dt = 0.05f) { move_box(&g, &b.x, &b.y, &b.vx, &b.vy, &b.on_ground, b.w, b.h, dt); }
};

}  // namespace

TEST_F(MoveBox, StillBoxStaysWithoutGroundContact) {
    Box b{1700.0f, 1300.0f, 0.0f, 0.0f, 1, 12.0f, 26.0f};
    move(b);
    EXPECT_EQ(b.x, 1700.0f);
    EXPECT_EQ(b.y, 1300.0f);
    EXPECT_EQ(b.on_ground, 0);
}

TEST_F(MoveBox, FloorsAndWallsStopABoxShortOfTheTileAndZeroThatAxis) {
    Box faller{1700.0f, 1560.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f};
    for (int i = 0; i < 20; ++i) {
        faller.vy = 390.0f;
        move(faller);
        ASSERT_LE(cell(faller.y + 26.0f - 0.01f), 100);
    }
    EXPECT_EQ(faller.vy, 0.0f);
    EXPECT_EQ(faller.on_ground, 1);
    EXPECT_GT(faller.y + 26.0f, 1616.0f - 3.0f);  // not snapped, but within one sub-step

    fill_tiles(g, 110, 99, 110, 100, TILE_STONE);
    Box runner{1740.0f, 1590.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f};
    for (int i = 0; i < 10; ++i) {
        runner.vx = 200.0f;
        move(runner);
        ASSERT_LE(cell(runner.x + 12.0f - 0.01f), 109);
    }
    EXPECT_EQ(runner.vx, 0.0f);
    EXPECT_GT(runner.x + 12.0f, 1760.0f - 3.0f);
}

TEST_F(MoveBox, FastBoxesNeverTunnelThroughOneTile) {
    fill_tiles(g, 100, 80, 140, 80, TILE_STONE);
    fill_tiles(g, 120, 60, 120, 79, TILE_STONE);
    Box faller{1650.0f, 1200.0f, 0.0f, 0.0f, 0, 8.0f, 8.0f};
    Box runner{1800.0f, 1250.0f, 0.0f, 0.0f, 0, 14.0f, 14.0f};
    for (int i = 0; i < 60; ++i) {
        faller.vy = 390.0f;
        runner.vx = 390.0f;
        move(faller);
        move(runner);
        ASSERT_LT(faller.y + 8.0f, 1280.0f + 0.01f);
        ASSERT_LT(runner.x + 14.0f, 1920.0f + 0.01f);
    }
}

TEST_F(MoveBox, BoxInsideASolidTileCannotMoveOnEitherAxis) {
    // Overlaps the floor row; moving up, only a whole-rectangle test keeps it.
    Box b{1608.0f, 1608.0f, 0.0f, 0.0f, 1, 14.0f, 14.0f};
    for (int i = 0; i < 3; ++i) {
        b.vx = 50.0f;
        b.vy = -50.0f;
        move(b);
        EXPECT_EQ(b.x, 1608.0f);
        EXPECT_EQ(b.y, 1608.0f);
        EXPECT_EQ(b.vx, 0.0f);
        EXPECT_EQ(b.vy, 0.0f);
        EXPECT_EQ(b.on_ground, 0);
    }
}

TEST_F(MoveBox, LaterSubStepsRetryAStoppedAxisWithTheSameIncrement) {
    // Running off a one-tile ledge within one frame: the fall refused at first
    // goes ahead once the box has cleared the ledge.
    fill_tiles(g, 100, 60, 140, 100, TILE_EMPTY);
    tile_at(g, 110, 80) = TILE_STONE;
    Box b{1765.0f, 1272.0f, 300.0f, 60.0f, 0, 8.0f, 8.0f};
    move(b);
    EXPECT_EQ(b.x, 1780.0f);
    EXPECT_GT(b.y, 1272.0f);
    EXPECT_EQ(b.on_ground, 1);
    EXPECT_EQ(b.vy, 0.0f);
}

TEST_F(MoveBox, EdgeMarginKeepsFlushBoxesOutOfNeighbouringCells) {
    Box slider{1700.0f, 1616.0f - 26.0f, 100.0f, 30.0f, 0, 12.0f, 26.0f};  // flush on the floor
    move(slider);
    EXPECT_EQ(slider.x, 1705.0f);
    EXPECT_EQ(slider.vx, 100.0f);
    EXPECT_EQ(slider.on_ground, 1);

    // A shaft exactly one tile wide, edged with passable tiles on one side.
    fill_tiles(g, 100, 60, 140, 100, TILE_STONE);
    fill_tiles(g, 110, 60, 110, 100, TILE_EMPTY);
    fill_tiles(g, 111, 60, 111, 70, TILE_LEAVES);
    Box b{1760.0f, 1000.0f, 0.0f, 200.0f, 0, 16.0f, 16.0f};
    move(b);
    EXPECT_EQ(b.y, 1010.0f);
    b.vx = 100.0f;  // leaves never stop a box
    move(b);
    EXPECT_EQ(b.x, 1765.0f);
}

TEST(MoveBoxBorders, TheWorldEdgeIsASolidWallOnAllFourSides) {
    auto game = fixtures::new_world();
    Game& g = *game;
    fill_tiles(g, 0, 0, WORLD_W - 1, 5, TILE_EMPTY);
    fill_tiles(g, 0, WORLD_H - 6, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    fill_tiles(g, 0, 0, 5, WORLD_H - 1, TILE_EMPTY);
    fill_tiles(g, WORLD_W - 6, 0, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    Box boxes[] = {
        {1.0f, 40.0f, -100.0f, 0.0f, 0, 12.0f, 26.0f},  // column -1, not column 0, must block
        {8192.0f - 13.0f, 40.0f, 100.0f, 0.0f, 0, 12.0f, 26.0f},
        {40.0f, 1.0f, 0.0f, -200.0f, 1, 12.0f, 26.0f},
        {40.0f, 2560.0f - 30.0f, 0.0f, 390.0f, 0, 12.0f, 26.0f},
        {1.0f, 1.0f, -390.0f, -390.0f, 0, 8.0f, 8.0f},
    };
    for (Box& b : boxes) {
        move_box(&g, &b.x, &b.y, &b.vx, &b.vy, &b.on_ground, b.w, b.h, 0.05f);
        EXPECT_TRUE(b.x >= 0.0f && b.x + b.w <= 8192.01f && b.y >= 0.0f && b.y + b.h <= 2560.01f);
        EXPECT_EQ(b.vx, 0.0f);
        EXPECT_EQ(b.vy, 0.0f);
    }
    EXPECT_EQ(boxes[0].x, 1.0f);
    EXPECT_EQ(boxes[2].y, 1.0f);
    EXPECT_EQ(boxes[2].on_ground, 0);  // stopped going up
    EXPECT_EQ(boxes[3].on_ground, 1);  // stopped by row 160
}
