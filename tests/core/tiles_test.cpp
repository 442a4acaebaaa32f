// Tile and item vocabulary: solidity, hardness bit patterns, drops, placement and
// names.
#include <gtest/gtest.h>

#include <bit>
#include <cstring>

#include "core/game_digest.h"
#include "core/tiles.h"

// For every id from -300 to 300 and both ends of the 32-bit range: solid, the
// hardness bits, the drop, the id as an item and as a tile, whether it is an item
// at all (little-endian 32-bit words), then the name and its NUL, worked out
// once by a separate script from the tile and tool tables. Only
// EMPTY, LEAVES and TORCH are passable, every id past 14 is solid; only GRASS
// drops something else (DIRT); BEDROCK can be held but never placed; tools and
// unknown ids are neither blocks nor tiles.
TEST(Tiles, EveryIdsPropertiesAndName) {
    std::uint32_t h = FNV1A_OFFSET;
    const auto facts = [&h](std::int32_t id) {
        const auto u = static_cast<std::uint32_t>(id);
        const std::uint32_t words[] = {tile_solid(u), std::bit_cast<std::uint32_t>(tile_hardness(u)), tile_drop(u),
                                       static_cast<std::uint32_t>(tile_to_item(id)),
                                       static_cast<std::uint32_t>(item_to_tile(id)), item_known(u)};
        h = fnv1a(item_name(u), std::strlen(item_name(u)) + 1, fnv1a(words, sizeof words, h));
    };
    for (std::int32_t id = -300; id <= 300; ++id) facts(id);
    facts(INT32_MIN);
    facts(INT32_MAX);
    EXPECT_EQ(0xF1DFDB91u, h);
}
