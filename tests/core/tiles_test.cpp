// Tile and item vocabulary: solidity, hardness bit patterns, drops, placement and names.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "core/tiles.h"

// Only EMPTY, LEAVES and TORCH are passable; only GRASS drops something else (DIRT).
TEST(Tiles, SolidityHardnessAndDropsOfEveryId) {
    const std::uint32_t hardness_bits[17] = {
        0x3DCCCCCD,  // 0 and every id past 16: outside the table
        0x3EA3D70A, 0x3EA3D70A, 0x3F866666, 0x3F0CCCCD, 0x3E3851EC, 0x3F59999A, 0x3F59999A, 0x3FACCCCD,
        0x3FCCCCCD, 0x461C3C00, 0x3F0CCCCD, 0x3F866666, 0x3F0CCCCD, 0x3DCCCCCD, 0x3EA3D70A, 0x3EA3D70A,
    };
    for (std::uint32_t id : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 10u, 11u, 12u, 13u, 14u, 15u, 16u, 17u, 200u, 0xFFFFFFFFu}) {
        EXPECT_EQ(id != 0 && id != 5 && id != 14, tile_solid(id)) << id;
        EXPECT_EQ(hardness_bits[id <= 16 ? id : 0], std::bit_cast<std::uint32_t>(tile_hardness(id))) << id;
        EXPECT_EQ(id == 1 ? 2u : id, tile_drop(id)) << id;
    }
}

// Every block is an item of the same id, and every block but BEDROCK places as
// itself; tools and unknown ids are neither.
TEST(Tiles, BedrockCanBeHeldButNeverPlaced) {
    for (std::int32_t id : {INT32_MIN, -1, 0, 1, 2, 9, 10, 11, 16, 17, 99, 100, 103, 104, INT32_MAX}) {
        EXPECT_EQ(id >= 1 && id <= 16 ? id : 0, tile_to_item(id)) << id;
        EXPECT_EQ(id >= 1 && id <= 16 && id != 10 ? id : 0, item_to_tile(id)) << id;
    }
}

TEST(Tiles, Names) {
    const struct { std::uint32_t id; const char* name; } names[] = {
        {0, "EMPTY"}, {7, "COPPER ORE"}, {16, "CLAY"}, {100, "WORN PICK"}, {103, "IRON SWORD"},
        {17, "UNKNOWN"}, {99, "UNKNOWN"}, {104, "UNKNOWN"}, {0xFFFFFFFFu, "UNKNOWN"}};
    for (const auto& n : names) EXPECT_STREQ(n.name, item_name(n.id)) << n.id;
}
