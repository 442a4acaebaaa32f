#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "core/crafting.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::clear_inventory;
using fixtures::new_world;
using fixtures::player_col;
using fixtures::player_row;

std::uint32_t count_of(const Game& g, std::int32_t item) { return inventory_count(&g.player, item); }

void give(Game& g, std::int32_t item, std::int32_t count) { ASSERT_TRUE(inventory_add(&g.player, item, count)); }

// Copies byte for byte, padding included, so that memcmp compares like with like.
template <typename T>
void snapshot(T& to, const T& from) { std::memcpy(&to, &from, sizeof to); }

// Removes every WORKBENCH around the player so that a test places its own.
void clear_benches(Game& g) {
    for (std::uint8_t& t : g.tiles)
        if (t == TILE_WORKBENCH) t = TILE_EMPTY;
}

struct Crafting : ::testing::Test {
    std::unique_ptr<Game> game = new_world();
    Game& g = *game;
    void SetUp() override {
        clear_inventory(g);
        clear_benches(g);
        g.notice[0] = '\0';
    }
};

}  // namespace

TEST_F(Crafting, BasicRecipesTurnInputsIntoOutputsAnywhere) {
    give(g, TILE_WOOD, 12);
    give(g, TILE_COAL, 1);
    give(g, TILE_STONE, 4);

    EXPECT_TRUE(craft_recipe(&g, 0));
    EXPECT_STREQ(g.notice, "CRAFTED");
    EXPECT_FLOAT_EQ(g.notice_timer, 2.2f);
    EXPECT_EQ(count_of(g, TILE_PLANK), 4u);
    EXPECT_EQ(count_of(g, TILE_WOOD), 11u);

    EXPECT_TRUE(craft_recipe(&g, 1));
    EXPECT_EQ(count_of(g, TILE_TORCH), 4u);
    EXPECT_EQ(count_of(g, TILE_COAL), 0u);
    EXPECT_EQ(count_of(g, TILE_WOOD), 10u);

    EXPECT_TRUE(craft_recipe(&g, 2));
    EXPECT_EQ(count_of(g, TILE_STONE_BRICK), 4u);
    EXPECT_EQ(count_of(g, TILE_STONE), 0u);

    EXPECT_TRUE(craft_recipe(&g, 3));
    EXPECT_EQ(count_of(g, TILE_WORKBENCH), 1u);
    EXPECT_EQ(count_of(g, TILE_WOOD), 0u);
}

TEST_F(Crafting, LastWoodBecomesPlanksAndClearsItsSlot) {
    give(g, TILE_WOOD, 1);
    EXPECT_TRUE(craft_recipe(&g, 0));
    EXPECT_EQ(count_of(g, TILE_WOOD), 0u);
    EXPECT_EQ(g.player.inventory[0].item, TILE_PLANK);
    EXPECT_EQ(g.player.inventory[0].count, 4);
}

TEST_F(Crafting, MissingSecondInputRemovesNothing) {
    give(g, TILE_WOOD, 3);
    Player before;
    snapshot(before, g.player);
    EXPECT_FALSE(craft_recipe(&g, 1));
    EXPECT_STREQ(g.notice, "MISSING MATERIALS");
    EXPECT_EQ(std::memcmp(&before, &g.player, sizeof before), 0);
}

TEST_F(Crafting, IronToolsNeedAWorkbenchBeforeMaterialsAreLookedAt) {
    EXPECT_FALSE(craft_recipe(&g, 4));
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");

    give(g, TILE_IRON_ORE, 8);
    give(g, TILE_WOOD, 4);
    EXPECT_FALSE(craft_recipe(&g, 5));
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");
    EXPECT_EQ(count_of(g, TILE_IRON_ORE), 8u);
}

TEST_F(Crafting, WorkbenchCountsUpToFourTilesAwayInBothDirections) {
    const int px = player_col(g);
    const int py = player_row(g);
    give(g, TILE_IRON_ORE, 16);
    give(g, TILE_WOOD, 8);

    tile_at(g, px + 5, py) = TILE_WORKBENCH;
    tile_at(g, px, py - 5) = TILE_WORKBENCH;
    EXPECT_FALSE(craft_recipe(&g, 4));
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");

    tile_at(g, px + 4, py + 4) = TILE_WORKBENCH;
    EXPECT_TRUE(craft_recipe(&g, 4));
    EXPECT_EQ(count_of(g, ITEM_IRON_PICK), 1u);
    EXPECT_EQ(count_of(g, TILE_IRON_ORE), 8u);
    EXPECT_EQ(count_of(g, TILE_WOOD), 4u);

    tile_at(g, px + 4, py + 4) = TILE_EMPTY;
    tile_at(g, px - 4, py - 4) = TILE_WORKBENCH;
    EXPECT_TRUE(craft_recipe(&g, 4));
    EXPECT_EQ(count_of(g, ITEM_IRON_PICK), 2u);
}

TEST_F(Crafting, WorkbenchSearchDoesNotWrapAroundTheGridEdge) {
    // Column -1 of row 1 would be column 511 of row 0 if the edge were not tested.
    fixtures::put_player(g, 0.0f, 16.0f);
    ASSERT_EQ(player_col(g), 0);
    ASSERT_EQ(player_row(g), 1);
    give(g, TILE_IRON_ORE, 6);
    give(g, TILE_WOOD, 2);
    tile_at(g, 511, 0) = TILE_WORKBENCH;
    tile_at(g, 511, 159) = TILE_WORKBENCH;
    EXPECT_FALSE(craft_recipe(&g, 5));
    EXPECT_STREQ(g.notice, "PLACE A WORKBENCH NEARBY");

    tile_at(g, 4, 0) = TILE_WORKBENCH;
    EXPECT_TRUE(craft_recipe(&g, 5));
    EXPECT_EQ(count_of(g, ITEM_IRON_SWORD), 1u);
    EXPECT_EQ(count_of(g, TILE_IRON_ORE), 0u);
    EXPECT_EQ(count_of(g, TILE_WOOD), 0u);
}

TEST_F(Crafting, BothInputsAreCheckedBeforeAnyIsTaken) {
    tile_at(g, player_col(g) + 1, player_row(g)) = TILE_WORKBENCH;
    give(g, TILE_IRON_ORE, 6);
    give(g, TILE_WOOD, 1);
    Player before;
    snapshot(before, g.player);
    EXPECT_FALSE(craft_recipe(&g, 5));
    EXPECT_STREQ(g.notice, "MISSING MATERIALS");
    EXPECT_EQ(std::memcmp(&before, &g.player, sizeof before), 0);
}

TEST_F(Crafting, FullInventoryRefundsTheInputs) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_DIRT, 999};
    g.player.inventory[5] = InventorySlot{TILE_WOOD, 1};
    g.player.inventory[39] = InventorySlot{TILE_WOOD, 998};

    EXPECT_FALSE(craft_recipe(&g, 0));
    EXPECT_STREQ(g.notice, "INVENTORY FULL");
    EXPECT_EQ(count_of(g, TILE_WOOD), 999u);
    EXPECT_EQ(count_of(g, TILE_PLANK), 0u);
    // The unit came out of slot 39 and went back by the add rule, into slot 5.
    EXPECT_EQ(g.player.inventory[5].count, 2);
    EXPECT_EQ(g.player.inventory[39].count, 997);
}

TEST_F(Crafting, InputsThatFreeASlotMakeRoomForTheOutput) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_DIRT, 999};
    g.player.inventory[7] = InventorySlot{TILE_WOOD, 1};
    EXPECT_TRUE(craft_recipe(&g, 0));
    EXPECT_EQ(g.player.inventory[7].item, TILE_PLANK);
    EXPECT_EQ(g.player.inventory[7].count, 4);
}

TEST_F(Crafting, IndexesPastTheTableAreIgnoredSilently) {
    give(g, TILE_WOOD, 20);
    std::snprintf(g.notice, sizeof g.notice, "%s", "UNTOUCHED");
    g.notice_timer = 0.5f;
    auto before = std::make_unique<Game>();
    snapshot(*before, g);
    EXPECT_FALSE(craft_recipe(&g, 6));
    EXPECT_FALSE(craft_recipe(&g, 0xFFFFFFFFu));
    EXPECT_EQ(std::memcmp(before.get(), &g, sizeof g), 0);
}
