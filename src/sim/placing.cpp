#include "sim/placing.h"

#include "core/geometry.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "sim/reach.h"

namespace {

// The outermost ring of the grid never takes a placed block.
bool inner_cell(std::int32_t tx, std::int32_t ty) {
    return tx >= 1 && tx <= WORLD_W - 2 && ty >= 1 && ty <= WORLD_H - 2;
}

// Any tile counts as support, passable ones included; callers pass inner cells.
bool supported(const Game& g, int tx, int ty) {
    return tile_at(g, tx - 1, ty) != TILE_EMPTY || tile_at(g, tx + 1, ty) != TILE_EMPTY ||
           tile_at(g, tx, ty - 1) != TILE_EMPTY || tile_at(g, tx, ty + 1) != TILE_EMPTY;
}

// Strict on every side: a cell that only touches the body is allowed.
bool overlaps_player(const Player& p, int tx, int ty) {
    const float left = static_cast<float>(tx * 16);
    const float top = static_cast<float>(ty * 16);
    return left < p.x + PLAYER_W && left + 16.0f > p.x && top < p.y + PLAYER_H && top + 16.0f > p.y;
}

}  // namespace

void game_place(Game* game, std::int32_t tx, std::int32_t ty) {
    Player& p = game->player;
    if (!inner_cell(tx, ty)) return;
    if (!within_reach(p, tx, ty)) return;
    if (tile_at(*game, tx, ty) != TILE_EMPTY) return;  // leaves and torches occupy their cell
    InventorySlot* slot = selected_slot(p);
    const std::int32_t tile = slot ? item_to_tile(slot->item) : 0;
    if (tile == 0) return;
    if (!supported(*game, tx, ty)) return;
    if (overlaps_player(p, tx, ty)) return;

    tile_at(*game, tx, ty) = static_cast<std::uint8_t>(tile);
    const int left = slot->count - 1;
    *slot = left > 0 ? InventorySlot{slot->item, static_cast<std::uint16_t>(left)} : InventorySlot{0, 0};
}
