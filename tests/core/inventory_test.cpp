#include <gtest/gtest.h>

#include <cstring>

#include "core/inventory.h"
#include "core/tiles.h"

namespace {

bool slot_is(const Player& p, int i, std::uint16_t item, std::uint16_t count) {
    return p.inventory[i].item == item && p.inventory[i].count == count;
}
bool same_slots(const Player& a, const Player& b) { return !std::memcmp(a.inventory, b.inventory, sizeof a.inventory); }

}  // namespace

TEST(Inventory, AddTopsUpStacksByTheirOwnRoomThenOpensTheLowestEmptySlotsAllOrNothing) {
    Player p{};
    p.inventory[3] = InventorySlot{TILE_DIRT, 999};
    p.inventory[5] = p.inventory[30] = InventorySlot{TILE_DIRT, 990};
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 1600));  // 9 + 9 + 999 + 583
    EXPECT_TRUE(slot_is(p, 5, TILE_DIRT, 999) && slot_is(p, 30, TILE_DIRT, 999) && slot_is(p, 3, TILE_DIRT, 999));
    EXPECT_TRUE(slot_is(p, 0, TILE_DIRT, 999) && slot_is(p, 1, TILE_DIRT, 583) && slot_is(p, 2, 0, 0));
    // All or nothing: with room for exactly one DIRT, nothing larger or malformed goes in.
    for (InventorySlot& s : p.inventory) s = InventorySlot{TILE_STONE, 999};
    p.inventory[0] = InventorySlot{TILE_DIRT, 998};
    const Player before = p;
    const std::int32_t refused[][2] = {{TILE_DIRT, 2}, {TILE_CLAY, 1}, {-3, 5}, {TILE_DIRT, 0}, {TILE_DIRT, -1}};
    for (const auto& r : refused) EXPECT_FALSE(inventory_add(&p, r[0], r[1])) << r[0] << " x " << r[1];
    EXPECT_TRUE(same_slots(before, p));
    EXPECT_TRUE(inventory_add(&p, TILE_DIRT, 1));
}

TEST(Inventory, RemoveDrainsFromTheBackRefusesAShortfallAndAcceptsCountsBelowOne) {
    Player p{};
    p.inventory[0] = p.inventory[39] = InventorySlot{TILE_WOOD, 2};
    p.inventory[20] = InventorySlot{TILE_COAL, 999};
    const Player before = p;
    EXPECT_FALSE(inventory_remove(&p, TILE_WOOD, 5));
    // A negative count must not be read as a huge unsigned one.
    for (std::int32_t n : {0, -5, INT32_MIN}) EXPECT_TRUE(inventory_remove(&p, TILE_GLOW_CRYSTAL, n)) << n;
    EXPECT_TRUE(same_slots(before, p));
    EXPECT_TRUE(inventory_remove(&p, TILE_WOOD, 3));
    EXPECT_TRUE(slot_is(p, 39, 0, 0) && slot_is(p, 0, TILE_WOOD, 1) && slot_is(p, 20, TILE_COAL, 999));
}

TEST(Inventory, ActivateSelectsTheHotbarAndSwapsBackpackSlotsIntoTheHand) {
    Player p{};
    p.inventory[3] = InventorySlot{TILE_CLAY, 7};
    p.inventory[25] = InventorySlot{TILE_GLOW_CRYSTAL, 3};
    for (std::uint32_t slot : {3u, 25u, 30u}) inventory_activate(&p, slot);  // select, swap, then park in an empty slot
    EXPECT_TRUE(p.selected == 3u && slot_is(p, 3, 0, 0) && slot_is(p, 25, TILE_CLAY, 7));
    EXPECT_TRUE(slot_is(p, 30, TILE_GLOW_CRYSTAL, 3));
    p.selected = 12;  // a bad stored selection is reset only by a slot in range
    const Player before = p;
    for (std::uint32_t slot : {40u, 0xFFFFFFFFu}) inventory_activate(&p, slot);
    inventory_activate(nullptr, 3);
    EXPECT_TRUE(p.selected == 12u && same_slots(before, p));
    inventory_activate(&p, 25);
    EXPECT_TRUE(p.selected == 0u && slot_is(p, 0, TILE_CLAY, 7) && slot_is(p, 25, 0, 0));
}
