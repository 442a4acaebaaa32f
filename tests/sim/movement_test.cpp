#include <gtest/gtest.h>

#include "sim/movement.h"
#include "sim/sim_fixtures.h"

namespace {

struct Box { float x, y, vx, vy; std::uint8_t on_ground; float w, h; };

// Boxes move in the open room (columns 100..160, rows 80..100, floor top at y 1616).
// A box already overlapping a solid tile stays stuck: see the creature in a placed block.
struct MoveBox : fixtures::Room {
    void move(Box& b) { move_box(&g, &b.x, &b.y, &b.vx, &b.vy, &b.on_ground, b.w, b.h, 0.05f); }
};

}  // namespace

TEST_F(MoveBox, FastBoxesStopShortOfSurfacesWithoutSnappingAndSlideFlushAlongThem) {
    Box slider{1800.0f, 1616.0f - 26.0f, 100.0f, 30.0f, 0, 12.0f, 26.0f};  // flush on the room's floor
    move(slider);  // the edge margin keeps the floor out of the sideways test
    EXPECT_TRUE(slider.x == 1805.0f && slider.vx == 100.0f && slider.on_ground == 1);
    fixtures::fill_tiles(g, 100, 95, 160, 95, TILE_STONE);  // floor, top at y 1520
    fixtures::fill_tiles(g, 120, 80, 120, 94, TILE_STONE);  // wall, left side at x 1920
    Box faller{1650.0f, 1440.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f};
    Box runner{1800.0f, 1490.0f, 0.0f, 0.0f, 0, 14.0f, 14.0f};
    for (int i = 0; i < 60; ++i) {
        faller.vy = runner.vx = 390.0f;
        move(faller);
        move(runner);
        ASSERT_TRUE(faller.y + faller.h < 1520.01f && runner.x + runner.w < 1920.01f) << "frame " << i;
    }
    // Stopped within one sub-step of the surface, that axis zeroed, and not snapped flush to it.
    EXPECT_TRUE(faller.vy == 0.0f && faller.on_ground == 1);
    EXPECT_TRUE(faller.y + faller.h > 1517.0f && faller.y + faller.h != 1520.0f);
    EXPECT_TRUE(runner.vx == 0.0f && runner.on_ground == 0 && runner.x + runner.w > 1917.0f);
}

TEST_F(MoveBox, TheWorldEdgeIsASolidWallOnAllFourSides) {
    fixtures::fill_tiles(g, 0, 0, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    Box boxes[] = {
        {1.0f, 40.0f, -100.0f, 0.0f, 0, 12.0f, 26.0f},  // column -1, not column 0, must block
        {8192.0f - 13.0f, 40.0f, 100.0f, 0.0f, 0, 12.0f, 26.0f},
        {40.0f, 1.0f, 0.0f, -200.0f, 1, 12.0f, 26.0f},
        {40.0f, 2560.0f - 30.0f, 0.0f, 390.0f, 0, 12.0f, 26.0f},
        {1.0f, 1.0f, -390.0f, -390.0f, 0, 8.0f, 8.0f},  // into the corner
    };
    for (Box& b : boxes) {
        move(b);
        EXPECT_TRUE(fixtures::inside_world(b.x, b.y, b.w, b.h) && b.vx == 0.0f && b.vy == 0.0f);
    }
    // Not snapped to the edge; stopped going up, then landed on row 160.
    EXPECT_TRUE(boxes[0].x == 1.0f && boxes[2].y == 1.0f && boxes[2].on_ground == 0 && boxes[3].on_ground == 1);
}
