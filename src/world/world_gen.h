// World generation: the stateless 32-bit hash shared by generation, simulation and
// drawing, and the seeded generator that fills the 512 x 160 grid in six passes
// (clear, terrain, caves, ores, trees, spawn). Same seed, same bytes; no allocation.
#pragma once

#include <cstdint>

#include "core/game.h"

std::uint32_t world_hash(std::uint32_t a, std::uint32_t b, std::uint32_t c);
// Surface row of column x (0..511) for an effective seed; always 44..64.
std::int32_t surface_height(std::uint32_t seed, std::int32_t x);
// Writes tiles, seed (0 becomes 5), name (default "GLIMWICK WORLD"), spawn_x, spawn_y.
void world_generate(Game* game, std::uint32_t seed, const char* name);
