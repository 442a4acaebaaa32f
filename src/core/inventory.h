// The 40-slot inventory inside Player: slots 0..9 are the hotbar, 10..39 the
// backpack, stacks of 1..999. Adds are all-or-nothing, removes drain from the back.
// Owns the selection: which slot is in hand and what it holds.
#pragma once

#include <cstdint>

#include "core/game.h"

bool inventory_add(Player* player, std::int32_t item, std::int32_t count);
std::uint32_t inventory_count(const Player* player, std::int32_t item);
bool inventory_remove(Player* player, std::int32_t item, std::int32_t count);
// Selects a hotbar slot, or swaps a backpack slot into the selected one.
void inventory_activate(Player* player, std::uint32_t slot);

// The selected slot. A stored selection is always a hotbar slot; anything past
// the inventory is an empty hand (null here) rather than read.
inline const InventorySlot* selected_slot(const Player& p) {
    return p.selected < static_cast<std::uint32_t>(INVENTORY_SLOTS) ? &p.inventory[p.selected] : nullptr;
}
inline InventorySlot* selected_slot(Player& p) {
    return const_cast<InventorySlot*>(selected_slot(static_cast<const Player&>(p)));
}

// The item in hand, 0 for an empty hand.
inline std::uint32_t held_item(const Player& p) {
    const InventorySlot* slot = selected_slot(p);
    return slot != nullptr ? slot->item : 0u;
}
