// Creatures: spawning near the player (more often at night) and the per-frame step
// (chase or wander, hop, gravity, contact damage, respawn of the player, despawn).
// Owns the creature kinds and the player's hurt and respawn.
#pragma once

#include "core/game.h"

// One spawn attempt; returns whether a creature was placed.
bool creatures_try_spawn(Game* game);
// Counts down to the next spawn attempt: every 2.2 s at night, 5.5 s by day.
void creatures_spawn_step(Game* game, float dt);
void creatures_step(Game* game, float dt);
