// Box movement through the tile grid: the one collision routine for the player,
// creatures and drops. Sub-steps of at most 3 px; cells outside the grid block.
#pragma once

#include <cstdint>

#include "core/game.h"

void move_box(const Game* game, float* x, float* y, float* vx, float* vy,
              std::uint8_t* on_ground, float w, float h, float dt);
