// Creatures: spawning near the player (more often at night) and the per-frame step
// (chase or wander, hop, gravity, contact damage, respawn of the player, despawn).
#pragma once

#include "core/game.h"

// One spawn attempt; returns whether a creature was placed.
bool creatures_try_spawn(Game* game);
void creatures_step(Game* game, float dt);
