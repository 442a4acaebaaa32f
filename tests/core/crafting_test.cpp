#include <gtest/gtest.h>

#include <utility>

#include "core/crafting.h"
#include "core/inventory.h"
#include "sim/sim_fixtures.h"

namespace {

// The player stands on tile (130, 100); recipes 4 and 5 need a workbench.
struct Crafting : fixtures::Room {
    std::uint32_t count(std::int32_t item) const { return inventory_count(&g.player, item); }
    void give(std::int32_t item, std::int32_t n) { ASSERT_TRUE(inventory_add(&g.player, item, n)); }
    // A refusal leaves its notice and the player as it was.
    void expect_refused(std::uint32_t recipe, const char* notice) {
        const auto before = fixtures::copy_of(g);
        EXPECT_FALSE(craft_recipe(&g, recipe));
        EXPECT_STREQ(g.notice, notice);
        EXPECT_EQ(std::memcmp(&before->player, &g.player, sizeof g.player), 0) << "recipe " << recipe;
    }
};

}  // namespace

TEST_F(Crafting, BasicRecipesWorkAnywhereAndIndexesPastTheTableChangeNothing) {
    for (const auto& [item, n] : {std::pair{TILE_WOOD, 12}, {TILE_COAL, 1}, {TILE_STONE, 4}}) give(item, n);
    const std::uint32_t made[][3] = {{0, TILE_PLANK, 4}, {1, TILE_TORCH, 4},
                                     {2, TILE_STONE_BRICK, 4}, {3, TILE_WORKBENCH, 1}};
    for (const auto& m : made)
        EXPECT_TRUE(craft_recipe(&g, m[0]) && count(static_cast<std::int32_t>(m[1])) == m[2]) << "recipe " << m[0];
    EXPECT_EQ(count(TILE_WOOD) + count(TILE_COAL) + count(TILE_STONE), 0u);
    for (std::uint32_t past : {6u, 0xFFFFFFFFu}) expect_refused(past, "CRAFTED");
}

TEST_F(Crafting, IronToolsNeedAWorkbenchWithinFourTilesAndBothMaterialsBeforeAnyIsTaken) {
    expect_refused(4, "PLACE A WORKBENCH NEARBY");  // asked for before the materials
    tile_at(g, 135, 100) = tile_at(g, 130, 95) = TILE_WORKBENCH;
    for (const auto& [item, n] : {std::pair{TILE_IRON_ORE, 24}, {TILE_WOOD, 8}}) give(item, n);
    expect_refused(4, "PLACE A WORKBENCH NEARBY");
    tile_at(g, 134, 96) = TILE_WORKBENCH;  // (+4, -4)
    EXPECT_TRUE(craft_recipe(&g, 4));
    EXPECT_TRUE(count(ITEM_IRON_PICK) == 1u && count(TILE_IRON_ORE) == 16u && count(TILE_WOOD) == 4u);
    tile_at(g, 134, 96) = TILE_EMPTY;
    tile_at(g, 126, 104) = TILE_WORKBENCH;  // (-4, +4), inside the floor
    EXPECT_TRUE(craft_recipe(&g, 4));
    expect_refused(4, "MISSING MATERIALS");  // IRON is there, WOOD is not
}

TEST_F(Crafting, AFullInventoryRefundsTheInputsByTheAddRule) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_DIRT, 999};
    g.player.inventory[5] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[39] = InventorySlot{TILE_WOOD, 998};
    EXPECT_TRUE(!craft_recipe(&g, 0) && std::strcmp(g.notice, "INVENTORY FULL") == 0);
    // Taken from slot 39, given back to the first stack with room.
    EXPECT_TRUE(g.player.inventory[5].count == 2 && g.player.inventory[39].count == 997);
    // Inputs that empty their slot make room for the output.
    g.player.inventory[7] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[5] = g.player.inventory[39] = InventorySlot{TILE_DIRT, 999};
    EXPECT_TRUE(craft_recipe(&g, 0) && g.player.inventory[7].item == TILE_PLANK);
}
