// The game's one stateless 32-bit hash: every seeded choice (terrain, caves, ores,
// trees, creature spawns, drop scatter, ore specks, the title's stars) draws from
// it, so the same inputs give the same world and the same pictures on every run.
#pragma once

#include <cstdint>

std::uint32_t world_hash(std::uint32_t a, std::uint32_t b, std::uint32_t c);
