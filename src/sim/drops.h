// Loose items lying in the world: 64 falling 8 x 8 boxes that are picked up near
// the player's centre and expire after 40 s. A 65th goes straight to the inventory.
#pragma once

#include <cstdint>

#include "core/game.h"

void spawn_drop(Game* game, std::uint32_t item, float x, float y);
void drops_step(Game* game, float dt);
