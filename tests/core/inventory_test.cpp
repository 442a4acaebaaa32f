#include <gtest/gtest.h>

#include <cstring>

#include "core/game.h"
#include "core/inventory.h"
#include "core/tiles.h"

namespace {

Player empty_player() {
    Player p;
    std::memset(&p, 0, sizeof p);
    return p;
}

void fill_all(Player& p, std::uint16_t item, std::uint16_t count) {
    for (InventorySlot& s : p.inventory) s = InventorySlot{item, count};
}

bool same_slots(const Player& a, const Player& b) {
    return std::memcmp(a.inventory, b.inventory, sizeof a.inventory) == 0;
}

// Occupied slots hold 1..999 and empty slots are all zero.
bool slots_consistent(const Player& p) {
    for (const InventorySlot& s : p.inventory) {
        if (s.item == 0 && s.count != 0) return false;
        if (s.item != 0 && (s.count < 1 || s.count > STACK_MAX)) return false;
    }
    return true;
}

}  // namespace

TEST(InventoryAdd, SplitsLargeAmountsIntoFullStacksFromTheFirstSlot) {
    Player p = empty_player();
    EXPECT_TRUE(inventory_add(&p, TILE_WOOD, 1500));
    EXPECT_EQ(p.inventory[0].item, TILE_WOOD);
    EXPECT_EQ(p.inventory[0].count, 999);
    EXPECT_EQ(p.inventory[1].item, TILE_WOOD);
    EXPECT_EQ(p.inventory[1].count, 501);
    EXPECT_EQ(p.inventory[2].item, 0);
    EXPECT_TRUE(slots_consistent(p));
}

TEST(InventoryAdd, TopsUpExistingStacksBeforeOpeningTheLowestEmptySlot) {
    Player p = empty_player();
    p.inventory[12] = InventorySlot{TILE_WOOD, 500};
    EXPECT_TRUE(inventory_add(&p, TILE_WOOD, 600));
    EXPECT_EQ(p.inventory[12].count, 999);
    EXPECT_EQ(p.inventory[0].item, TILE_WOOD);
    EXPECT_EQ(p.inventory[0].count, 101);

    // Partial stacks are topped up in slot order, skipping full ones.
    Player q = empty_player();
    q.inventory[3] = InventorySlot{TILE_DIRT, 999};
    q.inventory[5] = InventorySlot{TILE_DIRT, 990};
    q.inventory[30] = InventorySlot{TILE_DIRT, 990};
    EXPECT_TRUE(inventory_add(&q, TILE_DIRT, 15));
    EXPECT_EQ(q.inventory[5].count, 999);
    EXPECT_EQ(q.inventory[30].count, 996);
    EXPECT_EQ(q.inventory[0].item, 0);
}

TEST(InventoryAdd, RoomIsCountedFromEachStacksOwnCount) {
    // Slot 0 has room for exactly one more DIRT; everything else is full of STONE.
    Player p = empty_player();
    fill_all(p, TILE_STONE, 999);
    p.inventory[0] = InventorySlot{TILE_DIRT, 998};
    Player before;
    std::memcpy(&before, &p, sizeof p);

    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, 2));
    EXPECT_TRUE(same_slots(p, before));
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 1));
    EXPECT_EQ(p.inventory[0].count, 999);
}

TEST(InventoryAdd, FullInventoryRefusesAndStaysUntouched) {
    Player p = empty_player();
    fill_all(p, TILE_DIRT, 999);
    Player before;
    std::memcpy(&before, &p, sizeof p);
    EXPECT_FALSE(inventory_add(&p, TILE_STONE, 1));
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, 1));
    EXPECT_TRUE(same_slots(p, before));
}

TEST(InventoryAdd, RefusesNonPositiveItemsAndCounts) {
    Player p = empty_player();
    EXPECT_FALSE(inventory_add(&p, 0, 5));
    EXPECT_FALSE(inventory_add(&p, -3, 5));
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, 0));
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, -1));
    EXPECT_TRUE(same_slots(p, empty_player()));
}

TEST(InventoryAdd, FillsAllFortySlotsExactlyAndNoMore) {
    Player p = empty_player();
    EXPECT_FALSE(inventory_add(&p, TILE_SAND, 40 * 999 + 1));
    EXPECT_TRUE(same_slots(p, empty_player()));
    EXPECT_TRUE(inventory_add(&p, TILE_SAND, 40 * 999));
    EXPECT_EQ(inventory_count(&p, TILE_SAND), 40u * 999u);
    EXPECT_TRUE(slots_consistent(p));
}

TEST(InventoryCount, SumsEveryMatchingSlot) {
    Player p = empty_player();
    p.inventory[0] = InventorySlot{TILE_COAL, 3};
    p.inventory[9] = InventorySlot{TILE_STONE, 50};
    p.inventory[39] = InventorySlot{TILE_COAL, 999};
    EXPECT_EQ(inventory_count(&p, TILE_COAL), 1002u);
    EXPECT_EQ(inventory_count(&p, TILE_CLAY), 0u);
    EXPECT_EQ(inventory_count(&p, -1), 0u);
}

TEST(InventoryRemove, DrainsFromTheBackpackBeforeTheHotbar) {
    Player p = empty_player();
    p.inventory[0] = InventorySlot{TILE_WOOD, 2};
    p.inventory[39] = InventorySlot{TILE_WOOD, 2};
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 3));
    EXPECT_EQ(p.inventory[39].item, 0);
    EXPECT_EQ(p.inventory[39].count, 0);
    EXPECT_EQ(p.inventory[0].item, TILE_WOOD);
    EXPECT_EQ(p.inventory[0].count, 1);

    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 1));
    EXPECT_EQ(p.inventory[0].item, 0);
    EXPECT_EQ(p.inventory[0].count, 0);
}

TEST(InventoryRemove, ShortfallChangesNothing) {
    Player p = empty_player();
    p.inventory[4] = InventorySlot{TILE_IRON_ORE, 5};
    p.inventory[20] = InventorySlot{TILE_IRON_ORE, 2};
    Player before;
    std::memcpy(&before, &p, sizeof p);
    EXPECT_FALSE(inventory_remove(&p, TILE_IRON_ORE, 8));
    EXPECT_FALSE(inventory_remove(&p, TILE_GLOW_CRYSTAL, 1));
    EXPECT_TRUE(same_slots(p, before));
}

TEST(InventoryRemove, CountsBelowOneSucceedWithoutRemoving) {
    Player p = empty_player();
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 0));
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, -5));
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, INT32_MIN));
    p.inventory[1] = InventorySlot{TILE_WOOD, 7};
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, -1));
    EXPECT_EQ(p.inventory[1].count, 7);
}

TEST(InventoryActivate, HotbarSlotsSelect) {
    Player p = empty_player();
    p.inventory[0] = InventorySlot{TILE_DIRT, 10};
    inventory_activate(&p, 7);
    EXPECT_EQ(p.selected, 7u);
    EXPECT_EQ(p.inventory[0].count, 10);  // selecting moves nothing
}

TEST(InventoryActivate, BackpackSlotsSwapWithTheSelectedSlot) {
    Player p = empty_player();
    p.selected = 3;
    p.inventory[3] = InventorySlot{TILE_CLAY, 7};
    p.inventory[25] = InventorySlot{TILE_GLOW_CRYSTAL, 3};
    inventory_activate(&p, 25);
    EXPECT_EQ(p.selected, 3u);
    EXPECT_EQ(p.inventory[3].item, TILE_GLOW_CRYSTAL);
    EXPECT_EQ(p.inventory[3].count, 3);
    EXPECT_EQ(p.inventory[25].item, TILE_CLAY);
    EXPECT_EQ(p.inventory[25].count, 7);

    // An empty backpack slot takes the held stack and leaves the hand empty.
    inventory_activate(&p, 30);
    EXPECT_EQ(p.inventory[30].item, TILE_GLOW_CRYSTAL);
    EXPECT_EQ(p.inventory[3].item, 0);
    EXPECT_EQ(p.inventory[3].count, 0);
}

TEST(InventoryActivate, OutOfRangeSelectionIsResetBeforeActing) {
    Player p = empty_player();
    p.selected = 12;
    p.inventory[0] = InventorySlot{TILE_PLANK, 4};
    p.inventory[15] = InventorySlot{TILE_TORCH, 9};
    inventory_activate(&p, 15);
    EXPECT_EQ(p.selected, 0u);
    EXPECT_EQ(p.inventory[0].item, TILE_TORCH);
    EXPECT_EQ(p.inventory[15].item, TILE_PLANK);

    p.selected = 12;
    inventory_activate(&p, 5);
    EXPECT_EQ(p.selected, 5u);
}

TEST(InventoryActivate, SlotsPastTheInventoryDoNothingAtAll) {
    Player p = empty_player();
    p.selected = 12;  // not reset: the range test comes first
    p.inventory[0] = InventorySlot{TILE_DIRT, 1};
    Player before;
    std::memcpy(&before, &p, sizeof p);
    inventory_activate(&p, 40);
    inventory_activate(&p, 0xFFFFFFFFu);
    EXPECT_EQ(p.selected, 12u);
    EXPECT_TRUE(same_slots(p, before));
    inventory_activate(nullptr, 3);
}
