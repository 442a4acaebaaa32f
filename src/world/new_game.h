// A new game: a cleared record, a freshly generated world, the player standing at
// its spawn with the starting kit and the camera on them, on the playing screen.
// Owns the starting kit and the new player's health.
#pragma once

#include <cstdint>

#include "core/game.h"

// Turns `game` into a freshly generated world on the playing screen. The record
// is cleared before `name` is read, so passing game->name yields the default name.
void game_new(Game* game, std::uint32_t seed, const char* name);
