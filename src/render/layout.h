// Where the inventory overlay puts its 40 slots: the grid the drawing fills and
// the clicks land on. Ten columns, as many as the hotbar, which is its top row.
#pragma once

#include <cstdint>

#include "core/game.h"

constexpr int PACK_X = 48;        // the grid's top-left in view pixels
constexpr int PACK_Y = 76;
constexpr int PACK_CELL_W = 34;   // a 30 x 30 slot and the gap to the next one
constexpr int PACK_CELL_H = 40;
constexpr int PACK_SLOT_SIZE = 30;
constexpr int PACK_COLUMNS = HOTBAR_SLOTS;
constexpr int PACK_ROWS = INVENTORY_SLOTS / PACK_COLUMNS;

// Top-left of slot i's cell (and of the slot drawn in it).
constexpr int pack_slot_x(std::uint32_t i) { return PACK_X + PACK_CELL_W * static_cast<int>(i % PACK_COLUMNS); }
constexpr int pack_slot_y(std::uint32_t i) { return PACK_Y + PACK_CELL_H * static_cast<int>(i / PACK_COLUMNS); }

// The inventory slot (0..39) whose cell holds view point (vx, vy), or -1. The
// 34 x 40 cells tile the grid without gaps, so a click between two drawn slots
// still lands on one.
inline int inventory_slot_at(int vx, int vy) {
    if (vx < PACK_X || vx > PACK_X + PACK_COLUMNS * PACK_CELL_W - 1 || vy < PACK_Y ||
        vy > PACK_Y + PACK_ROWS * PACK_CELL_H - 1)
        return -1;
    return (vy - PACK_Y) / PACK_CELL_H * PACK_COLUMNS + (vx - PACK_X) / PACK_CELL_W;
}
