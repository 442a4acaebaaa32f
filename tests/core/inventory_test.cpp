
#include "core/inventory.h"
#include "sim/sim_fixtures.h"

using fixtures::slots;

TEST(Inventory, AddTopsUpStacksByTheirOwnRoomThenOpensTheLowestEmptySlotsAllOrNothing) {
    Player p{};
    p.inventory[3] = InventorySlot{TILE_DIRT, 999};
    p.inventory[5] = p.inventory[30] = InventorySlot{TILE_DIRT, 990};
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 1600));  // 9 + 9 + 999 + 583
    EXPECT_EQ(" 0:2x999 1:2x583 3:2x999 5:2x999 30:2x999", slots(p));
    // All or nothing: with room for exactly one DIRT, nothing larger or malformed goes in.
    for (InventorySlot& s : p.inventory) s = InventorySlot{TILE_STONE, 999};
    p.inventory[0] = InventorySlot{TILE_DIRT, 998};
    const std::string before = slots(p);
    const std::int32_t refused[][2] = {{TILE_DIRT, 2}, {TILE_CLAY, 1}, {-3, 5}, {TILE_DIRT, 0}, {TILE_DIRT, -1}};
    for (const auto& r : refused) EXPECT_FALSE(inventory_add(&p, r[0], r[1])) << r[0] << " x " << r[1];
    EXPECT_EQ(before, slots(p));
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 1));
}

TEST(Inventory, RemoveDrainsFromTheBackRefusesAShortfallAndAcceptsCountsBelowOne) {
    Player p{};
    p.inventory[0] = p.inventory[39] = InventorySlot{TILE_WOOD, 2};
    p.inventory[20] = InventorySlot{TILE_COAL, 999};
    EXPECT_FALSE(inventory_remove(&p, TILE_WOOD, 5));
    // A negative count must not be read as a huge unsigned one.
    for (std::int32_t n : {0, -5, INT32_MIN}) EXPECT_TRUE(inventory_remove(&p, TILE_GLOW_CRYSTAL, n)) << n;
    EXPECT_EQ(" 0:4x2 20:6x999 39:4x2", slots(p));
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 3));
    EXPECT_EQ(" 0:4x1 20:6x999", slots(p));
}

TEST(Inventory, ActivateSelectsTheHotbarAndSwapsBackpackSlotsIntoTheHand) {
    Player p{};
    p.inventory[3] = InventorySlot{TILE_CLAY, 7};
    p.inventory[25] = InventorySlot{TILE_GLOW_CRYSTAL, 3};
    for (std::uint32_t slot : {3u, 25u, 30u}) inventory_activate(&p, slot);  // select, swap, then park in an empty slot
    EXPECT_EQ(3u, p.selected);
    EXPECT_EQ(" 25:16x7 30:9x3", slots(p));
    p.selected = 40;  // a bad stored selection is an empty hand, reset only by a slot in range
    for (std::uint32_t slot : {40u, 0xFFFFFFFFu}) inventory_activate(&p, slot);
    inventory_activate(nullptr, 3);
    EXPECT_EQ(40u, p.selected);
    EXPECT_EQ(0u, held_item(p));
    EXPECT_EQ(" 25:16x7 30:9x3", slots(p));
    inventory_activate(&p, 25);
    EXPECT_EQ(0u, p.selected);
    EXPECT_EQ(" 0:16x7 30:9x3", slots(p));
}
