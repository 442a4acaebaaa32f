#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "core/crafting.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::player_col;
using fixtures::player_row;

struct Crafting : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    Player saved{};
    void SetUp() override {
        fixtures::clear_inventory(g);
        for (std::uint8_t& t : g.tiles)
            if (t == TILE_WORKBENCH) t = TILE_EMPTY;
        g.notice[0] = '\0';
    }
    std::uint32_t count(std::int32_t item) const { return inventory_count(&g.player, item); }
    void give(std::int32_t item, std::int32_t n) { ASSERT_TRUE(inventory_add(&g.player, item, n)); }
    void save() { std::memcpy(&saved, &g.player, sizeof saved); }
    bool unchanged() const { return std::memcmp(&saved, &g.player, sizeof saved) == 0; }
};

}  // namespace

TEST_F(Crafting, BasicRecipesWorkAnywhere) {
    give(TILE_WOOD, 12);
    give(TILE_COAL, 1);
    give(TILE_STONE, 4);
    EXPECT_TRUE(craft_recipe(&g, 0));
    EXPECT_STREQ(g.notice, "CRAFTED");
    EXPECT_EQ(g.notice_timer, 2.2f);
    EXPECT_EQ(count(TILE_PLANK), 4u);
    EXPECT_TRUE(craft_recipe(&g, 1));
    EXPECT_EQ(count(TILE_TORCH), 4u);
    EXPECT_EQ(count(TILE_COAL), 0u);
    EXPECT_TRUE(craft_recipe(&g, 2));
    EXPECT_EQ(count(TILE_STONE_BRICK), 4u);
    EXPECT_EQ(count(TILE_STONE), 0u);
    EXPECT_TRUE(craft_recipe(&g, 3));
    EXPECT_EQ(count(TILE_WORKBENCH), 1u);
    EXPECT_EQ(count(TILE_WOOD), 0u);  // 1 + 1 + 10 of the 12
}

TEST_F(Crafting, MissingMaterialsTakeNothing) {
    give(TILE_WOOD, 1);
    save();
    EXPECT_FALSE(craft_recipe(&g, 1));  // no COAL: the WOOD stays
    EXPECT_STREQ(g.notice, "MISSING MATERIALS");
    EXPECT_TRUE(unchanged());

    // Both inputs are checked before either is removed: IRON is there, WOOD short.
    tile_at(g, player_col(g) + 1, player_row(g)) = TILE_WORKBENCH;
    give(TILE_IRON_ORE, 6);
    save();
    EXPECT_FALSE(craft_recipe(&g, 5));
    EXPECT_STREQ(g.notice, "MISSING MATERIALS");
    EXPECT_TRUE(unchanged());
}

TEST_F(Crafting, IronToolsNeedAWorkbenchWithinFourTiles) {
    EXPECT_FALSE(craft_recipe(&g, 4));  // asked for before the materials
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");

    const int px = player_col(g);
    const int py = player_row(g);
    give(TILE_IRON_ORE, 16);
    give(TILE_WOOD, 8);
    tile_at(g, px + 5, py) = TILE_WORKBENCH;
    tile_at(g, px, py - 5) = TILE_WORKBENCH;
    EXPECT_FALSE(craft_recipe(&g, 4));
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");

    tile_at(g, px + 4, py + 4) = TILE_WORKBENCH;
    EXPECT_TRUE(craft_recipe(&g, 4));
    EXPECT_EQ(count(ITEM_IRON_PICK), 1u);
    EXPECT_EQ(count(TILE_IRON_ORE), 8u);
    EXPECT_EQ(count(TILE_WOOD), 4u);
    tile_at(g, px + 4, py + 4) = TILE_EMPTY;
    tile_at(g, px - 4, py - 4) = TILE_WORKBENCH;
    EXPECT_TRUE(craft_recipe(&g, 4));
    EXPECT_EQ(count(ITEM_IRON_PICK), 2u);
}

TEST_F(Crafting, WorkbenchSearchDoesNotWrapAroundTheGridEdge) {
    // Column -1 of row 1 would be column 511 of row 0 if the edge were not tested.
    fixtures::put_player(g, 0.0f, 16.0f);
    give(TILE_IRON_ORE, 6);
    give(TILE_WOOD, 2);
    tile_at(g, 511, 0) = TILE_WORKBENCH;
    tile_at(g, 511, 159) = TILE_WORKBENCH;
    EXPECT_FALSE(craft_recipe(&g, 5));
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");
    tile_at(g, 4, 0) = TILE_WORKBENCH;
    EXPECT_TRUE(craft_recipe(&g, 5));
    EXPECT_EQ(count(ITEM_IRON_SWORD), 1u);
    EXPECT_EQ(count(TILE_IRON_ORE), 0u);
    EXPECT_EQ(count(TILE_WOOD), 0u);
}

TEST_F(Crafting, FullInventoryRefundsTheInputsByTheAddRule) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_DIRT, 999};
    g.player.inventory[5] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[39] = InventorySlot{TILE_WOOD, 998};
    EXPECT_FALSE(craft_recipe(&g, 0));
    EXPECT_STREQ(g.notice, "INVENTORY FULL");
    EXPECT_EQ(count(TILE_WOOD), 999u);
    EXPECT_EQ(count(TILE_PLANK), 0u);
    // Taken from slot 39, given back to the first stack with room.
    EXPECT_EQ(g.player.inventory[5].count, 2);
    EXPECT_EQ(g.player.inventory[39].count, 997);

    // Inputs that empty their slot make room for the output.
    g.player.inventory[7] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[5] = InventorySlot{TILE_DIRT, 999};
    g.player.inventory[39] = InventorySlot{TILE_DIRT, 999};
    EXPECT_TRUE(craft_recipe(&g, 0));
    EXPECT_EQ(g.player.inventory[7].item, TILE_PLANK);
}

TEST_F(Crafting, IndexesPastTheTableAreIgnoredSilently) {
    give(TILE_WOOD, 20);
    std::snprintf(g.notice, sizeof g.notice, "%s", "UNTOUCHED");
    auto before = std::make_unique<Game>();
    std::memcpy(before.get(), &g, sizeof g);
    EXPECT_FALSE(craft_recipe(&g, 6));
    EXPECT_FALSE(craft_recipe(&g, 0xFFFFFFFFu));
    EXPECT_EQ(std::memcmp(before.get(), &g, sizeof g), 0);
}
