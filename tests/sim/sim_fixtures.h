// Shared set-up for the play tests: seeded worlds on the heap, carved rooms and
// inventory shortcuts. Worlds made here never autosave unless a test says so.
#pragma once

#include <cstring>
#include <memory>

#include "core/frame_input.h"
#include "core/game.h"
#include "core/tiles.h"

namespace fixtures {

constexpr float STEP = 1.0f / 60.0f;

inline std::unique_ptr<Game> new_world(std::uint32_t seed = 1234u) {
    auto game = std::make_unique<Game>();
    game_new(game.get(), seed, "FIXTURE");
    game->autosave_off = 1;
    return game;
}

inline void fill_tiles(Game& g, int c0, int r0, int c1, int r1, std::uint8_t tile) {
    for (int r = r0; r <= r1; ++r)
        for (int c = c0; c <= c1; ++c) tile_at(g, c, r) = tile;
}

// An empty room of columns c0..c1 and rows r0..r1 with a STONE floor row below it.
inline void carve_room(Game& g, int c0, int r0, int c1, int r1) {
    fill_tiles(g, c0, r0, c1, r1, TILE_EMPTY);
    fill_tiles(g, c0, r1 + 1, c1, r1 + 1, TILE_STONE);
}

inline void clear_inventory(Game& g) {
    std::memset(g.player.inventory, 0, sizeof g.player.inventory);
    g.player.selected = 0;
}

inline void hold(Game& g, std::uint16_t item, std::uint16_t count = 1) {
    g.player.inventory[g.player.selected] = InventorySlot{item, count};
}

// Puts the player's body at rest with its top-left corner at (x, y).
inline void put_player(Game& g, float x, float y) {
    g.player.x = x;
    g.player.y = y;
    g.player.vx = 0.0f;
    g.player.vy = 0.0f;
}

// The player's tile as crafting and spawning see it: its centre, truncated.
inline int player_col(const Game& g) { return static_cast<int>((g.player.x + 6.0f) * 0.0625f); }
inline int player_row(const Game& g) { return static_cast<int>((g.player.y + 13.0f) * 0.0625f); }

// A pointer position (view pixels) that lands on the middle of tile (tx, ty).
inline void point_at(const Game& g, FrameInput& in, int tx, int ty) {
    in.mouse_x = static_cast<int>(static_cast<float>(tx * 16 + 8) - g.camera_x);
    in.mouse_y = static_cast<int>(static_cast<float>(ty * 16 + 8) - g.camera_y);
}

}  // namespace fixtures
