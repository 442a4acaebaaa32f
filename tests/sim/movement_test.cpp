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

void move(const Game& g, Box& b, float dt) { move_box(&g, &b.x, &b.y, &b.vx, &b.vy, &b.on_ground, b.w, b.h, dt); }

int bottom_row(const Box& b) { return static_cast<int>(std::floor((b.y + b.h - 0.01f) / 16.0f)); }
int right_col(const Box& b) { return static_cast<int>(std::floor((b.x + b.w - 0.01f) / 16.0f)); }

// An open space (columns 100..140, rows 60..100) walled with STONE, so that every
// test starts from the same known cells.
struct MoveBox : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override { fixtures::arena(g, 100, 60, 140, 100); }
};

}  // namespace

TEST_F(MoveBox, StillBoxStaysWithoutGroundContact) {
    Box b{1700.0f, 1300.0f, 0.0f, 0.0f, 1, 12.0f, 26.0f};
    move(g, b, 0.05f);
    EXPECT_EQ(b.x, 1700.0f);
    EXPECT_EQ(b.y, 1300.0f);
    EXPECT_EQ(b.on_ground, 0);
}

TEST_F(MoveBox, FallingBoxLandsOnTheFloorWithoutEnteringIt) {
    // Floor is row 101; fall at terminal speed with the largest frame.
    Box b{1700.0f, 1560.0f, 0.0f, 390.0f, 0, 12.0f, 26.0f};
    bool landed = false;
    for (int i = 0; i < 40; ++i) {
        b.vy = 390.0f;
        move(g, b, 0.05f);
        ASSERT_LE(bottom_row(b), 100) << "frame " << i;
        landed = landed || b.on_ground;
    }
    EXPECT_TRUE(landed);
    EXPECT_EQ(b.vy, 0.0f);
    EXPECT_EQ(b.on_ground, 1);
    // Not snapped: it rests within one sub-step of the surface.
    EXPECT_GT(b.y + 26.0f, 1616.0f - 3.0f);
}

TEST_F(MoveBox, WallStopsHorizontalMotionAndZeroesIt) {
    tile_at(g, 110, 100) = TILE_STONE;  // wall cell in front, resting on the floor
    tile_at(g, 110, 99) = TILE_STONE;
    Box b{1740.0f, 1590.0f, 200.0f, 0.0f, 0, 12.0f, 26.0f};
    for (int i = 0; i < 10; ++i) {
        b.vx = 200.0f;
        move(g, b, 0.05f);
        ASSERT_LE(right_col(b), 109);
    }
    EXPECT_EQ(b.vx, 0.0f);
    EXPECT_GT(b.x + 12.0f, 1760.0f - 3.0f);
}

TEST_F(MoveBox, FastBoxesNeverTunnelThroughOneTile) {
    // A single-tile floor at row 80 and a single-tile wall at column 120.
    fill_tiles(g, 100, 80, 140, 80, TILE_STONE);
    Box faller{1650.0f, 1200.0f, 0.0f, 390.0f, 0, 8.0f, 8.0f};
    for (int i = 0; i < 60; ++i) {
        faller.vy = 390.0f;
        move(g, faller, 0.05f);
        ASSERT_LT(faller.y, 1280.0f);
    }
    fill_tiles(g, 120, 60, 120, 79, TILE_STONE);
    Box runner{1800.0f, 1250.0f, 390.0f, 0.0f, 0, 14.0f, 14.0f};
    for (int i = 0; i < 60; ++i) {
        runner.vx = 390.0f;
        move(g, runner, 0.05f);
        ASSERT_LT(runner.x + 14.0f, 1920.0f + 0.01f);
    }
}

TEST_F(MoveBox, BoxInsideASolidTileCannotMoveOnEitherAxis) {
    Box b{1608.0f, 1608.0f, 50.0f, -50.0f, 1, 14.0f, 14.0f};  // overlaps the STONE at row 101
    fill_tiles(g, 100, 101, 100, 101, TILE_STONE);
    for (int i = 0; i < 3; ++i) {
        b.vx = 50.0f;
        b.vy = -50.0f;
        move(g, b, 0.05f);
        EXPECT_EQ(b.x, 1608.0f);
        EXPECT_EQ(b.y, 1608.0f);
        EXPECT_EQ(b.vx, 0.0f);
        EXPECT_EQ(b.vy, 0.0f);
        EXPECT_EQ(b.on_ground, 0);  // it was moving up
    }
}

TEST_F(MoveBox, LaterSubStepsRetryAStoppedAxisWithTheSameIncrement) {
    // Standing on the edge of a one-tile ledge and running off it in one frame:
    // the fall that was refused at first goes ahead once the box clears the ledge.
    fill_tiles(g, 100, 60, 140, 100, TILE_EMPTY);
    tile_at(g, 110, 80) = TILE_STONE;
    Box b{1765.0f, 1272.0f, 300.0f, 60.0f, 0, 8.0f, 8.0f};
    move(g, b, 0.05f);
    EXPECT_EQ(b.x, 1780.0f);
    EXPECT_GT(b.y, 1272.0f);
    EXPECT_EQ(b.on_ground, 1);
    EXPECT_EQ(b.vy, 0.0f);
}

TEST_F(MoveBox, SlidingAlongAFloorIsNotStoppedByIt) {
    Box b{1700.0f, 1616.0f - 26.0f, 100.0f, 30.0f, 0, 12.0f, 26.0f};  // flush on the floor
    move(g, b, 0.05f);
    EXPECT_EQ(b.x, 1705.0f);
    EXPECT_EQ(b.vx, 100.0f);
    EXPECT_EQ(b.y, 1616.0f - 26.0f);
    EXPECT_EQ(b.on_ground, 1);
}

TEST_F(MoveBox, FlushEdgesStayOutOfTheNeighbouringCells) {
    // A shaft exactly one tile wide: a 16-px box falls through it untouched.
    fill_tiles(g, 100, 60, 140, 100, TILE_STONE);
    fill_tiles(g, 110, 60, 110, 100, TILE_EMPTY);
    Box b{1760.0f, 1000.0f, 0.0f, 200.0f, 0, 16.0f, 16.0f};
    move(g, b, 0.05f);
    EXPECT_EQ(b.x, 1760.0f);
    EXPECT_EQ(b.y, 1010.0f);
    EXPECT_EQ(b.vy, 200.0f);
}

TEST_F(MoveBox, PassableTilesNeverStopABox) {
    fill_tiles(g, 100, 100, 140, 100, TILE_LEAVES);
    tile_at(g, 105, 99) = TILE_TORCH;
    Box b{1670.0f, 1584.0f, 100.0f, 100.0f, 0, 8.0f, 8.0f};
    move(g, b, 0.05f);
    EXPECT_EQ(b.x, 1675.0f);
    EXPECT_EQ(b.y, 1589.0f);
    EXPECT_EQ(b.on_ground, 0);
}

TEST(MoveBoxBorders, TheWorldEdgeIsASolidWallOnAllFourSides) {
    auto game = fixtures::new_world();
    Game& g = *game;
    fill_tiles(g, 0, 0, WORLD_W - 1, 5, TILE_EMPTY);
    fill_tiles(g, 0, WORLD_H - 6, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    fill_tiles(g, 0, 0, 5, WORLD_H - 1, TILE_EMPTY);
    fill_tiles(g, WORLD_W - 6, 0, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);

    Box left{1.0f, 40.0f, -100.0f, 0.0f, 0, 12.0f, 26.0f};  // column -1 must block, not column 0
    move(g, left, 0.05f);
    EXPECT_EQ(left.x, 1.0f);
    EXPECT_EQ(left.vx, 0.0f);

    Box right{8192.0f - 13.0f, 40.0f, 100.0f, 0.0f, 0, 12.0f, 26.0f};
    move(g, right, 0.05f);
    EXPECT_LE(right.x + 12.0f, 8192.0f + 0.01f);
    EXPECT_EQ(right.vx, 0.0f);

    Box top{40.0f, 1.0f, 0.0f, -200.0f, 1, 12.0f, 26.0f};
    move(g, top, 0.05f);
    EXPECT_EQ(top.y, 1.0f);
    EXPECT_EQ(top.vy, 0.0f);
    EXPECT_EQ(top.on_ground, 0);

    Box bottom{40.0f, 2560.0f - 30.0f, 0.0f, 390.0f, 0, 12.0f, 26.0f};
    move(g, bottom, 0.05f);
    EXPECT_LE(bottom.y + 26.0f, 2560.0f + 0.01f);
    EXPECT_EQ(bottom.vy, 0.0f);
    EXPECT_EQ(bottom.on_ground, 1);

    Box corner{1.0f, 1.0f, -390.0f, -390.0f, 0, 8.0f, 8.0f};
    move(g, corner, 0.05f);
    EXPECT_EQ(corner.x, 1.0f);
    EXPECT_EQ(corner.y, 1.0f);
}
