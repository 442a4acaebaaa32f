// Holding the primary button: a sword strikes a creature under the pointer first,
// otherwise the pointed tile gathers mining work by tool until it breaks and drops.
// Owns mining speed by tool and material.
#pragma once

#include <cstdint>

#include "core/game.h"

void game_attack_or_mine(Game* game, std::int32_t tx, std::int32_t ty, float dt);
