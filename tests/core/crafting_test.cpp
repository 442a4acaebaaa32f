
#include <utility>

#include "core/crafting.h"
#include "core/inventory.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::slots;

// The player stands on tile (130, 100); recipes 4 and 5 need a workbench.
struct Crafting : fixtures::Room {
    void give(std::int32_t item, std::int32_t n) { ASSERT_TRUE(inventory_add(&g.player, item, n)); }
    // A refusal leaves its notice and the player as it was.
    void expect_refused(std::uint32_t recipe, const char* notice) {
        const auto before = fixtures::copy_of(g);
        EXPECT_FALSE(craft_recipe(&g, recipe));
        EXPECT_STREQ(notice, g.notice);
        EXPECT_EQ(0, std::memcmp(&before->player, &g.player, sizeof g.player)) << "recipe " << recipe;
    }
};

}  // namespace

TEST_F(Crafting, BasicRecipesWorkAnywhereAndIndexesPastTheTableChangeNothing) {
    for (const auto& [item, n] : {std::pair{TILE_WOOD, 12}, {TILE_COAL, 1}, {TILE_STONE, 4}}) give(item, n);
    for (std::uint32_t recipe = 0; recipe < 4; ++recipe) EXPECT_TRUE(craft_recipe(&g, recipe)) << recipe;
    EXPECT_EQ(" 0:13x1 1:14x4 2:12x4 3:11x4", slots(g.player));  // inputs emptied slots first
    for (std::uint32_t past : {6u, 0xFFFFFFFFu}) expect_refused(past, "CRAFTED");
}

// Measured from the tile under the body's centre: here on the corner of tile (130, 100),
// then a hair above and left of it, in tile (129, 99).
TEST_F(Crafting, IronToolsNeedAWorkbenchWithinFourTilesAndBothMaterialsBeforeAnyIsTaken) {
    expect_refused(4, "PLACE A WORKBENCH NEARBY");  // asked for before the materials
    for (const auto& [item, n] : {std::pair{TILE_IRON_ORE, 32}, {TILE_WOOD, 16}}) give(item, n);
    const int benches[][3] = {{5, 0, 0}, {0, -5, 0}, {-5, 5, 0}, {4, 4, 1}, {-4, -4, 1}};  // from the centre tile
    for (int hair = 0; hair < 2; ++hair) {
        fixtures::put_player(g, 2074.0f - 0.25f * static_cast<float>(hair), 1587.0f - 0.25f * static_cast<float>(hair));
        for (const auto& b : benches) {
            std::uint8_t& tile = tile_at(g, 130 - hair + b[0], 100 - hair + b[1]);
            tile = TILE_WORKBENCH;
            EXPECT_EQ(b[2] == 1, craft_recipe(&g, 4)) << b[0] << ", " << b[1] << " from " << 130 - hair;
            tile = TILE_EMPTY;
        }
    }
    EXPECT_EQ(" 2:102x4", slots(g.player));
    tile_at(g, 130, 96) = TILE_WORKBENCH;
    for (const auto& [item, n] : {std::pair{TILE_WOOD, 4}, {TILE_IRON_ORE, 8}}) {  // either one alone
        std::memset(g.player.inventory, 0, sizeof g.player.inventory);
        give(item, n);
        expect_refused(4, "MISSING MATERIALS");
    }
    std::memset(g.player.inventory, 0, sizeof g.player.inventory);
    for (const auto& [item, n] : {std::pair{TILE_IRON_ORE, 6}, {TILE_WOOD, 2}}) give(item, n);  // one sword's worth
    EXPECT_TRUE(craft_recipe(&g, 5));
    EXPECT_EQ(" 0:103x1", slots(g.player));
}

TEST_F(Crafting, AFullInventoryRefundsTheInputsByTheAddRule) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_DIRT, 999};
    g.player.inventory[5] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[39] = InventorySlot{TILE_WOOD, 998};
    g.player.inventory[6] = InventorySlot{TILE_COAL, 2};
    EXPECT_FALSE(craft_recipe(&g, 1));  // torches: wood and coal
    EXPECT_STREQ("INVENTORY FULL", g.notice);
    // Taken from slot 39, given back to the first stack with room; the coal too.
    EXPECT_EQ(2, g.player.inventory[5].count);
    EXPECT_EQ(997, g.player.inventory[39].count);
    EXPECT_EQ(2, g.player.inventory[6].count);
    // Inputs that empty their slot make room for the output.
    g.player.inventory[7] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[5] = g.player.inventory[39] = InventorySlot{TILE_DIRT, 999};
    EXPECT_TRUE(craft_recipe(&g, 0));
    EXPECT_EQ(TILE_PLANK, g.player.inventory[7].item);
}
