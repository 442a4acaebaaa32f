
#include <array>

#include "sim/movement.h"
#include "sim/sim_fixtures.h"

using MoveBox = fixtures::Room;

// Off-grid cells block like solid tiles; a box stopped short of an edge is not snapped
// to it, and one already inside a tile stays stuck.
// Each row: a 12 x 26 box's x, y, vx, vy and on_ground before one 0.05 s move, then
// its x, y and on_ground after it; every box ends at rest.
TEST_F(MoveBox, TheWorldEdgeIsASolidWallOnAllFourSidesAndABoxInsideATileIsStuck) {
    fixtures::fill_tiles(g, 0, 0, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    tile_at(g, 100, 100) = TILE_STONE;
    const float cases[][8] = {
        {1.0f, 40.0f, -100.0f, 0.0f, 0, 1.0f, 40.0f, 0},  // column -1, not column 0, must block
        {8192.0f - 13.0f, 40.0f, 100.0f, 0.0f, 0, 8192.0f - 13.0f, 40.0f, 0},
        {40.0f, 1.0f, 0.0f, -200.0f, 1, 40.0f, 1.0f, 0},
        // 390 px/s for 0.05 s is 19.5 px in seven sub-steps: the first already lands.
        {40.0f, 2560.0f - 30.0f, 0.0f, 390.0f, 0, 40.0f, 2530.0f + 19.5f / 7.0f, 1},
        {40.0f, 2540.0f, 0.0f, 0.0f, 1, 40.0f, 2540.0f, 0},  // already past the bottom, at rest: stuck, not standing
        {1601.0f, 1601.0f, 100.0f, 100.0f, 0, 1601.0f, 1601.0f, 1},  // already inside tile (100, 100): stuck
    };
    for (const auto& c : cases) {
        float x = c[0], y = c[1], vx = c[2], vy = c[3];
        std::uint8_t on_ground = c[4] != 0.0f;
        move_box(&g, &x, &y, &vx, &vy, &on_ground, 12.0f, 26.0f, 0.05f);
        EXPECT_EQ((std::array{c[5], c[6], 0.0f, 0.0f, c[7]}), (std::array{x, y, vx, vy, static_cast<float>(on_ground)}))
            << "box from " << c[0] << ", " << c[1];
    }
}
