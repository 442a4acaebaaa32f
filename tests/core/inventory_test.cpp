#include <gtest/gtest.h>

#include <cstring>

#include "core/game.h"
#include "core/inventory.h"
#include "core/tiles.h"

namespace {

struct Inventory : ::testing::Test {
    Player p{};
    Player saved{};
    void fill_all(std::uint16_t item, std::uint16_t count) {
        for (InventorySlot& s : p.inventory) s = InventorySlot{item, count};
    }
    void save() { std::memcpy(saved.inventory, p.inventory, sizeof p.inventory); }
    bool unchanged() const { return std::memcmp(saved.inventory, p.inventory, sizeof p.inventory) == 0; }
    bool slot_is(int i, std::uint16_t item, std::uint16_t count) const {
        return p.inventory[i].item == item && p.inventory[i].count == count;
    }
};

}  // namespace

TEST_F(Inventory, AddTopsUpStacksThenOpensTheLowestEmptySlots) {
    p.inventory[12] = InventorySlot{TILE_WOOD, 500};
    EXPECT_TRUE(inventory_add(&p, TILE_WOOD, 1600));
    EXPECT_TRUE(slot_is(12, TILE_WOOD, 999));
    EXPECT_TRUE(slot_is(0, TILE_WOOD, 999));
    EXPECT_TRUE(slot_is(1, TILE_WOOD, 102));
    EXPECT_TRUE(slot_is(2, 0, 0));

    // Partial stacks fill in slot order, full ones are skipped.
    p = Player{};
    p.inventory[3] = InventorySlot{TILE_DIRT, 999};
    p.inventory[5] = InventorySlot{TILE_DIRT, 990};
    p.inventory[30] = InventorySlot{TILE_DIRT, 990};
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 15));
    EXPECT_TRUE(slot_is(5, TILE_DIRT, 999));
    EXPECT_TRUE(slot_is(30, TILE_DIRT, 996));
    EXPECT_TRUE(slot_is(0, 0, 0));
}

TEST_F(Inventory, AddIsAllOrNothingWithRoomCountedPerStack) {
    // Slot 0 has room for exactly one more DIRT; the rest is full of STONE.
    fill_all(TILE_STONE, 999);
    p.inventory[0] = InventorySlot{TILE_DIRT, 998};
    save();
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, 2));
    EXPECT_FALSE(inventory_add(&p, TILE_CLAY, 1));
    EXPECT_TRUE(unchanged());
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 1));
    EXPECT_TRUE(slot_is(0, TILE_DIRT, 999));
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, 1));

    p = Player{};
    save();
    EXPECT_FALSE(inventory_add(&p, TILE_SAND, 40 * 999 + 1));
    EXPECT_TRUE(unchanged());
    EXPECT_TRUE(inventory_add(&p, TILE_SAND, 40 * 999));
    EXPECT_EQ(inventory_count(&p, TILE_SAND), 40u * 999u);
}

TEST_F(Inventory, AddRefusesNonPositiveItemsAndCounts) {
    EXPECT_FALSE(inventory_add(&p, 0, 5));
    EXPECT_FALSE(inventory_add(&p, -3, 5));
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, 0));
    EXPECT_FALSE(inventory_add(&p, TILE_DIRT, -1));
    EXPECT_TRUE(unchanged());
}

TEST_F(Inventory, RemoveDrainsFromTheBackpackBeforeTheHotbar) {
    p.inventory[0] = InventorySlot{TILE_WOOD, 2};
    p.inventory[39] = InventorySlot{TILE_WOOD, 2};
    p.inventory[20] = InventorySlot{TILE_COAL, 999};
    EXPECT_EQ(inventory_count(&p, TILE_WOOD), 4u);
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 3));
    EXPECT_TRUE(slot_is(39, 0, 0));
    EXPECT_TRUE(slot_is(0, TILE_WOOD, 1));
    EXPECT_TRUE(slot_is(20, TILE_COAL, 999));
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 1));
    EXPECT_TRUE(slot_is(0, 0, 0));
}

TEST_F(Inventory, RemoveRefusesAShortfallAndAcceptsCountsBelowOne) {
    p.inventory[4] = InventorySlot{TILE_IRON_ORE, 5};
    p.inventory[20] = InventorySlot{TILE_IRON_ORE, 2};
    save();
    EXPECT_FALSE(inventory_remove(&p, TILE_IRON_ORE, 8));
    EXPECT_FALSE(inventory_remove(&p, TILE_GLOW_CRYSTAL, 1));
    // A negative count must not be read as a huge unsigned one.
    EXPECT_TRUE(inventory_remove(&p, TILE_GLOW_CRYSTAL, 0));
    EXPECT_TRUE(inventory_remove(&p, TILE_GLOW_CRYSTAL, -5));
    EXPECT_TRUE(inventory_remove(&p, TILE_IRON_ORE, INT32_MIN));
    EXPECT_TRUE(unchanged());
}

TEST_F(Inventory, ActivateSelectsHotbarSlotsAndSwapsBackpackSlotsIn) {
    p.inventory[3] = InventorySlot{TILE_CLAY, 7};
    p.inventory[25] = InventorySlot{TILE_GLOW_CRYSTAL, 3};
    inventory_activate(&p, 3);
    EXPECT_EQ(p.selected, 3u);
    inventory_activate(&p, 25);
    EXPECT_EQ(p.selected, 3u);
    EXPECT_TRUE(slot_is(3, TILE_GLOW_CRYSTAL, 3));
    EXPECT_TRUE(slot_is(25, TILE_CLAY, 7));
    // An empty backpack slot takes the held stack and leaves the hand empty.
    inventory_activate(&p, 30);
    EXPECT_TRUE(slot_is(30, TILE_GLOW_CRYSTAL, 3));
    EXPECT_TRUE(slot_is(3, 0, 0));
}

TEST_F(Inventory, ActivateResetsABadSelectionOnlyForSlotsInRange) {
    p.selected = 12;
    p.inventory[0] = InventorySlot{TILE_PLANK, 4};
    p.inventory[15] = InventorySlot{TILE_TORCH, 9};
    save();
    inventory_activate(&p, 40);  // out of range: nothing at all, not even the reset
    inventory_activate(&p, 0xFFFFFFFFu);
    inventory_activate(nullptr, 3);
    EXPECT_EQ(p.selected, 12u);
    EXPECT_TRUE(unchanged());

    inventory_activate(&p, 15);
    EXPECT_EQ(p.selected, 0u);
    EXPECT_TRUE(slot_is(0, TILE_TORCH, 9));
    EXPECT_TRUE(slot_is(15, TILE_PLANK, 4));
}
