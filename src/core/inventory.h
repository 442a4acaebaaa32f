// The 40-slot inventory inside Player: slots 0..9 are the hotbar, 10..39 the
// backpack, stacks of 1..999. Adds are all-or-nothing, removes drain from the back.
#pragma once

#include <cstdint>

#include "core/game.h"

bool inventory_add(Player* player, std::int32_t item, std::int32_t count);
std::uint32_t inventory_count(const Player* player, std::int32_t item);
bool inventory_remove(Player* player, std::int32_t item, std::int32_t count);
// Selects a hotbar slot, or swaps a backpack slot into the selected one.
void inventory_activate(Player* player, std::uint32_t slot);
