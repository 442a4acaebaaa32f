// What the player can touch: the reach shared by mining, striking and placing,
// about 6.24 tiles from the body's centre to the centre of a tile.
#pragma once

#include <cstdint>

#include "core/game.h"
#include "core/geometry.h"

constexpr float REACH_SQ = 39.0f;  // in tiles squared

// Squared distance in tiles from the player's centre to the centre of tile (tx, ty).
inline float reach_sq(const Player& p, std::int32_t tx, std::int32_t ty) {
    const float dx = static_cast<float>(tx) + 0.5f - player_centre_x(p) / 16.0f;
    const float dy = static_cast<float>(ty) + 0.5f - player_centre_y(p) / 16.0f;
    return dx * dx + dy * dy;
}

inline bool within_reach(const Player& p, std::int32_t tx, std::int32_t ty) {
    return reach_sq(p, tx, ty) <= REACH_SQ;
}
