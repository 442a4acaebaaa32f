// World generation: the seeded generator that fills the 512 x 160 grid in six
// passes (clear, terrain, caves, ores, trees, spawn) from the shared hash. Owns the
// surface line and the default world name. Same seed, same bytes; no allocation.
#pragma once

#include <cstdint>

#include "core/game.h"
#include "core/hash.h"

// The name a world gets when none is given; the create-world form starts from it.
constexpr char DEFAULT_WORLD_NAME[] = "GLIMWICK WORLD";

// Surface row of column x (0..511) for an effective seed; always 44..64.
std::int32_t surface_height(std::uint32_t seed, std::int32_t x);
// Writes tiles, seed (0 becomes 5), name (default DEFAULT_WORLD_NAME), spawn_x, spawn_y.
void world_generate(Game* game, std::uint32_t seed, const char* name);
