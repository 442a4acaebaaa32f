// Shared set-up for the play tests: seeded worlds on the heap, carved rooms and
// inventory shortcuts. Worlds made here never autosave unless a test says so.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "core/tiles.h"
#include "sim/update.h"
#include "world/new_game.h"

namespace fixtures {

constexpr float STEP = 1.0f / 60.0f;

inline std::unique_ptr<Game> new_world(std::uint32_t seed = 1234u) {
    auto game = std::make_unique<Game>();
    game_new(game.get(), seed, "FIXTURE");
    game->autosave_off = 1;
    return game;
}

// A byte copy, padding and all.
inline std::unique_ptr<Game> copy_of(const Game& g) {
    auto c = std::make_unique<Game>();
    std::memcpy(c.get(), &g, sizeof g);
    return c;
}

inline void fill_tiles(Game& g, int c0, int r0, int c1, int r1, std::uint8_t tile) {
    for (int r = r0; r <= r1; ++r)
        for (int c = c0; c <= c1; ++c) tile_at(g, c, r) = tile;
}

// A closed STONE box whose inside (columns c0..c1, rows r0..r1) is empty.
inline void arena(Game& g, int c0, int r0, int c1, int r1) {
    fill_tiles(g, c0 - 1, r0 - 1, c1 + 1, r1 + 1, TILE_STONE);
    fill_tiles(g, c0, r0, c1, r1, TILE_EMPTY);
}

inline void hold(Game& g, std::uint16_t item, std::uint16_t count = 1) {
    g.player.inventory[g.player.selected] = InventorySlot{item, count};
}

inline void put_player(Game& g, float x, float y) {
    g.player.x = x;
    g.player.y = y;
    g.player.vx = g.player.vy = 0.0f;
}

// The player's body standing in column `col` on the top of row `floor_row`.
inline void stand_player(Game& g, int col, int floor_row) {
    put_player(g, static_cast<float>(col * 16 + 2), static_cast<float>(floor_row * 16 - 26));
    g.player.on_ground = 1;
}

// A pointer position (view pixels) that lands on the middle of tile (tx, ty).
inline void point_at(const Game& g, FrameInput& in, int tx, int ty) {
    in.mouse_x = static_cast<int>(static_cast<float>(tx * 16 + 8) - g.camera_x);
    in.mouse_y = static_cast<int>(static_cast<float>(ty * 16 + 8) - g.camera_y);
}

// A closed room (columns 100..160, rows 80..100; the floor's top is at y 1616)
// with the player standing empty-handed on tile (130, 100), body x 2082..2094
// and y 1590..1616. No creature spawns unless a test says so.
struct Room : ::testing::Test {
    std::unique_ptr<Game> game = new_world();
    Game& g = *game;
    FrameInput in{};
    void SetUp() override {
        arena(g, 100, 80, 160, 100);
        stand_player(g, 130, 101);
        std::memset(g.player.inventory, 0, sizeof g.player.inventory);
        g.creature_spawn_timer = 1.0e9f;
    }
    void step(float dt = STEP) { game_update(&g, &in, dt); }
};

}  // namespace fixtures
