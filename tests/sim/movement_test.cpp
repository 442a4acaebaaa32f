#include <gtest/gtest.h>

#include "sim/movement.h"
#include "sim/sim_fixtures.h"

namespace {

struct Box {
    float x, y, vx, vy;
    std::uint8_t on_ground;
    float w, h;
    bool operator==(const Box&) const = default;
};
std::ostream& operator<<(std::ostream& o, const Box& b) {
    return o << "(" << b.x << ", " << b.y << ") v (" << b.vx << ", " << b.vy << ") ground " << int(b.on_ground);
}

// Boxes move in the open room (columns 100..160, rows 80..100, floor top at y 1616).
// 390 px/s for 0.05 s is 19.5 px in seven sub-steps of S px.
constexpr float S = 19.5f / 7.0f;

struct MoveBox : fixtures::Room {
    void move(Box& b) { move_box(&g, &b.x, &b.y, &b.vx, &b.vy, &b.on_ground, b.w, b.h, 0.05f); }
};

}  // namespace

// Off-grid cells block like solid tiles; a box stopped short of an edge is not snapped to it.
TEST_F(MoveBox, TheWorldEdgeIsASolidWallOnAllFourSides) {
    fixtures::fill_tiles(g, 0, 0, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    Box boxes[] = {
        {1.0f, 40.0f, -100.0f, 0.0f, 0, 12.0f, 26.0f},  // column -1, not column 0, must block
        {8192.0f - 13.0f, 40.0f, 100.0f, 0.0f, 0, 12.0f, 26.0f},
        {40.0f, 1.0f, 0.0f, -200.0f, 1, 12.0f, 26.0f},
        {40.0f, 2560.0f - 30.0f, 0.0f, 390.0f, 0, 12.0f, 26.0f},
        {40.0f, 2540.0f, 0.0f, 0.0f, 1, 12.0f, 26.0f},  // already past the bottom, at rest: stuck, not standing
    };
    const Box after[] = {
        {1.0f, 40.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f},
        {8192.0f - 13.0f, 40.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f},
        {40.0f, 1.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f},
        {40.0f, 2530.0f + S, 0.0f, 0.0f, 1, 12.0f, 26.0f},
        {40.0f, 2540.0f, 0.0f, 0.0f, 0, 12.0f, 26.0f},
    };
    for (int i = 0; i < 5; ++i) {
        move(boxes[i]);
        EXPECT_EQ(after[i], boxes[i]) << "box " << i;
    }
}
