// Tile and item vocabulary: solidity, hardness bit patterns, drops, placement and names.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "core/tiles.h"

TEST(Tiles, OnlyEmptyLeavesAndTorchArePassable) {
    for (std::uint32_t id = 0; id < 300; ++id) {
        const bool passable = id == 0 || id == 5 || id == 14;
        EXPECT_EQ(tile_solid(id), !passable) << id;
    }
    EXPECT_TRUE(tile_solid(0xFFFFFFFFu));
}

TEST(Tiles, HardnessHasExactBitPatterns) {
    const std::uint32_t bits[17] = {
        0x3DCCCCCD,  // 0: outside the table
        0x3EA3D70A, 0x3EA3D70A, 0x3F866666, 0x3F0CCCCD, 0x3E3851EC, 0x3F59999A, 0x3F59999A, 0x3FACCCCD,
        0x3FCCCCCD, 0x461C3C00, 0x3F0CCCCD, 0x3F866666, 0x3F0CCCCD, 0x3DCCCCCD, 0x3EA3D70A, 0x3EA3D70A,
    };
    for (std::uint32_t id = 0; id <= 16; ++id) EXPECT_EQ(std::bit_cast<std::uint32_t>(tile_hardness(id)), bits[id]) << id;
    EXPECT_EQ(std::bit_cast<std::uint32_t>(tile_hardness(17)), 0x3DCCCCCDu);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(tile_hardness(0xFFFFFFFFu)), 0x3DCCCCCDu);
}

TEST(Tiles, GrassDropsDirtAndEverythingElseItself) {
    EXPECT_EQ(tile_drop(1), 2u);
    for (std::uint32_t id : {0u, 2u, 3u, 9u, 10u, 14u, 16u, 200u}) EXPECT_EQ(tile_drop(id), id);
}

TEST(Tiles, BedrockCanBeHeldButNeverPlaced) {
    for (std::int32_t id = 1; id <= 16; ++id) {
        EXPECT_EQ(tile_to_item(id), id);
        EXPECT_EQ(item_to_tile(id), id == 10 ? 0 : id);
    }
    for (std::int32_t id : {0, -1, 17, 99, 100, 101, 102, 103, 104, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(item_to_tile(id), 0) << id;
        EXPECT_EQ(tile_to_item(id), 0) << id;
    }
}

TEST(Tiles, Names) {
    EXPECT_STREQ(item_name(0), "EMPTY");
    EXPECT_STREQ(item_name(7), "COPPER ORE");
    EXPECT_STREQ(item_name(16), "CLAY");
    EXPECT_STREQ(item_name(100), "WORN PICK");
    EXPECT_STREQ(item_name(103), "IRON SWORD");
    for (std::uint32_t id : {17u, 99u, 104u, 0xFFFFFFFFu}) EXPECT_STREQ(item_name(id), "UNKNOWN");
}
