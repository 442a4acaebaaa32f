// What the player can touch: the reach shared by mining and placing (about 6.24
// tiles from the body's centre) and the item held in the selected slot.
#pragma once

#include <cstdint>

#include "core/game.h"

constexpr float REACH_SQ = 39.0f;  // in tiles squared

// Squared distance in tiles from the player's centre to the centre of tile (tx, ty).
inline float reach_sq(const Player& p, std::int32_t tx, std::int32_t ty) {
    const float dx = static_cast<float>(tx) + 0.5f - (p.x + 6.0f) / 16.0f;
    const float dy = static_cast<float>(ty) + 0.5f - (p.y + 13.0f) / 16.0f;
    return dx * dx + dy * dy;
}

inline bool within_reach(const Player& p, std::int32_t tx, std::int32_t ty) {
    return reach_sq(p, tx, ty) <= REACH_SQ;
}

// A stored selection is always a hotbar slot; anything past the inventory is
// treated as an empty hand rather than read.
inline bool selection_valid(const Player& p) {
    return p.selected < static_cast<std::uint32_t>(INVENTORY_SLOTS);
}

// The selected slot; null only for a selection past the inventory.
inline InventorySlot* held_slot(Player& p) { return selection_valid(p) ? &p.inventory[p.selected] : nullptr; }

inline std::uint32_t held_item(const Player& p) { return selection_valid(p) ? p.inventory[p.selected].item : 0u; }
