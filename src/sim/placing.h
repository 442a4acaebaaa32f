// Placing one block from the selected slot at the pointed tile: inner area, reach,
// free cell, block in hand, support and not inside the player, tested in order.
#pragma once

#include <cstdint>

#include "core/game.h"

void game_place(Game* game, std::int32_t tx, std::int32_t ty);
