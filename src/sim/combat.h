// Striking with a sword: a creature near the pointed tile is knocked back, loses
// health by the sword and drops COAL when it dies. Owns the strike's cooldown.
#pragma once

#include <cstdint>

#include "core/game.h"

// Strikes the first live creature near tile (tx, ty) with the held sword, unless
// the last strike is still cooling down; returns whether one was struck.
bool strike_creature(Game* game, std::int32_t tx, std::int32_t ty);
