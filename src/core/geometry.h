// Where things sit: the player's body and its centre, the spot the player appears
// at, the camera put on the player, and the tile under a point of the view. One
// home, so the simulation, the drawing and the start of a world always agree.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/game.h"

// The player's body, measured from its top-left corner (Player::x, y).
constexpr float PLAYER_W = 12.0f;
constexpr float PLAYER_H = 26.0f;

// Reach, pickups, the workbench search and the camera all measure from here.
inline float player_centre_x(const Player& p) { return p.x + PLAYER_W / 2.0f; }
inline float player_centre_y(const Player& p) { return p.y + PLAYER_H / 2.0f; }

// A new world and every respawn put the body in the middle of the spawn column,
// (16 - 12) / 2 px in from its left edge, standing in the spawn row.
inline void player_to_spawn(Game* game) {
    game->player.x = static_cast<float>(game->spawn_x * TILE_SIZE) + 2.0f;
    game->player.y = static_cast<float>(game->spawn_y * TILE_SIZE);
}

constexpr float VIEW_HALF_W = 320.0f;
constexpr float VIEW_HALF_H = 180.0f;

// A world opens with the player's corner in the middle of the view; from there
// the moving camera eases to where it follows the player.
inline void camera_on_player(Game* game) {
    game->camera_x = game->player.x - VIEW_HALF_W;
    game->camera_y = game->player.y - VIEW_HALF_H;
}

// Cells this far out are off the world and off the screen either way; the limit
// keeps the cell and the pixel sums made from it inside the int range.
constexpr float CELL_LIMIT = 16777216.0f;

// The tile under view pixel `view` on one axis, with the camera at `camera`.
// Floored, so points left of or above the world give negative cells.
inline std::int32_t tile_under(float camera, std::int32_t view) {
    const float cell = std::floor((camera + static_cast<float>(view)) / 16.0f);
    if (std::isnan(cell)) return 0;
    return static_cast<std::int32_t>(std::clamp(cell, -CELL_LIMIT, CELL_LIMIT));
}
