// Fingerprints of a game record: FNV-1a 32-bit over plain bytes (a world grid), and
// over every field of a whole Game in declaration order, each little-endian, so the
// padding never counts. The save and demo checksums and the tests all use them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/game.h"

constexpr std::uint32_t FNV1A_OFFSET = 0x811C9DC5u;
constexpr std::uint32_t FNV1A_PRIME = 0x01000193u;

// Continues the hash `h` over `size` bytes; start from FNV1A_OFFSET.
std::uint32_t fnv1a(const void* bytes, std::size_t size, std::uint32_t h = FNV1A_OFFSET);

std::uint32_t game_digest(const Game* game);
