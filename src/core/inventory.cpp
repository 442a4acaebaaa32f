#include "core/inventory.h"

#include <algorithm>

namespace {

bool slot_empty(const InventorySlot& s) { return s.item == 0; }
bool slot_holds(const InventorySlot& s, std::int32_t item) { return s.item == item; }

void clear_slot(InventorySlot& s) {
    s.item = 0;
    s.count = 0;
}

// Units of `item` the inventory could still take, counted only until `wanted` is
// reached so the check never walks further than it has to.
std::int32_t room_for(const Player* player, std::int32_t item, std::int32_t wanted) {
    std::int32_t room = 0;
    for (const InventorySlot& s : player->inventory) {
        if (slot_holds(s, item)) room += STACK_MAX - s.count;
        else if (slot_empty(s)) room += STACK_MAX;
        if (room >= wanted) break;
    }
    return room;
}

}  // namespace

bool inventory_add(Player* player, std::int32_t item, std::int32_t count) {
    if (item < 1 || count < 1) return false;
    // All or nothing: nothing is touched unless every unit fits.
    if (room_for(player, item, count) < count) return false;

    std::int32_t remaining = count;
    // Existing stacks are topped up before a new slot is opened.
    for (InventorySlot& s : player->inventory) {
        if (remaining == 0) break;
        if (!slot_holds(s, item) || s.count >= STACK_MAX) continue;
        const std::int32_t moved = std::min(remaining, STACK_MAX - s.count);
        s.count = static_cast<std::uint16_t>(s.count + moved);
        remaining -= moved;
    }
    // New stacks open in the lowest empty slot, so the hotbar fills first.
    for (InventorySlot& s : player->inventory) {
        if (remaining == 0) break;
        if (!slot_empty(s)) continue;
        const std::int32_t moved = std::min(remaining, STACK_MAX);
        s.item = static_cast<std::uint16_t>(item);
        s.count = static_cast<std::uint16_t>(moved);
        remaining -= moved;
    }
    return true;
}

std::uint32_t inventory_count(const Player* player, std::int32_t item) {
    std::uint32_t total = 0;
    for (const InventorySlot& s : player->inventory)
        if (slot_holds(s, item)) total += s.count;
    return total;
}

bool inventory_remove(Player* player, std::int32_t item, std::int32_t count) {
    // Signed 64-bit so that a negative count is never read as a huge one.
    const std::int64_t total = inventory_count(player, item);
    if (total < static_cast<std::int64_t>(count)) return false;
    if (count < 1) return true;

    // The backpack's copies go first; the held hotbar stack is used last.
    std::int32_t remaining = count;
    for (int i = INVENTORY_SLOTS - 1; i >= 0 && remaining > 0; --i) {
        InventorySlot& s = player->inventory[i];
        if (!slot_holds(s, item)) continue;
        const std::int32_t taken = std::min<std::int32_t>(remaining, s.count);
        s.count = static_cast<std::uint16_t>(s.count - taken);
        remaining -= taken;
        if (s.count == 0) clear_slot(s);
    }
    return true;
}

void inventory_activate(Player* player, std::uint32_t slot) {
    if (player == nullptr || slot >= static_cast<std::uint32_t>(INVENTORY_SLOTS)) return;
    if (player->selected >= static_cast<std::uint32_t>(HOTBAR_SLOTS)) player->selected = 0;
    if (slot < static_cast<std::uint32_t>(HOTBAR_SLOTS)) {
        player->selected = slot;
        return;
    }
    // Empty slots swap like any other, so a click can park the held stack.
    InventorySlot& held = player->inventory[player->selected];
    const InventorySlot picked = player->inventory[slot];
    player->inventory[slot] = held;
    held = picked;
}
