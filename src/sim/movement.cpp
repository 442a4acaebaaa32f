#include "sim/movement.h"

#include <cmath>

#include "core/tiles.h"

namespace {

// Largest step on either axis: well under a tile, so nothing tunnels through one.
constexpr float MAX_SUBSTEP = 3.0f;
// Keeps a box flush with a tile boundary out of the next tile.
constexpr float EDGE_MARGIN = 0.01f;

// Floored before the conversion, so negative coordinates land in negative cells.
int cell_of(float v) { return static_cast<int>(std::floor(v / 16.0f)); }

bool blocking(const Game* game, int col, int row) {
    return !in_grid(col, row) || tile_solid(tile_at(*game, col, row));
}

// Every cell the rectangle touches, not just its leading edge: a box that already
// overlaps a solid tile must stay stuck.
bool area_blocked(const Game* game, float x, float y, float w, float h) {
    const int c0 = cell_of(x);
    const int c1 = cell_of(x + w - EDGE_MARGIN);
    const int r0 = cell_of(y);
    const int r1 = cell_of(y + h - EDGE_MARGIN);
    for (int r = r0; r <= r1; ++r)
        for (int c = c0; c <= c1; ++c)
            if (blocking(game, c, r)) return true;
    return false;
}

int substep_count(float dx, float dy) {
    const float longest = std::fmax(std::fabs(dx), std::fabs(dy));
    const int n = static_cast<int>(std::ceil(longest / MAX_SUBSTEP));
    return n < 2 ? 1 : n;
}

}  // namespace

void move_box(const Game* game, float* x, float* y, float* vx, float* vy,
              std::uint8_t* on_ground, float w, float h, float dt) {
    const float dx = *vx * dt;
    const float dy = *vy * dt;
    const int n = substep_count(dx, dy);
    // Fixed for the frame: a stopped axis keeps trying the same increment.
    const float sx = dx / static_cast<float>(n);
    const float sy = dy / static_cast<float>(n);

    *on_ground = 0;
    for (int i = 0; i < n; ++i) {
        const float nx = *x + sx;
        if (area_blocked(game, nx, *y, w, h)) *vx = 0.0f;
        else *x = nx;

        const float ny = *y + sy;
        if (area_blocked(game, *x, ny, w, h)) {
            *vy = 0.0f;
            if (sy > 0.0f) *on_ground = 1;
        } else {
            *y = ny;
        }
    }
}
