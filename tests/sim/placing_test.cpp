// Placing under a random walk near the world's top left corner, then its bottom
// right one, changing every 2,000 steps: tiles of every kind set down and cleared,
// the player moved about, blocks, bedrock, tools, crystals, an unknown id or
// nothing put in hand (a selection past the pack too), and clicks on cells on and
// around the player's body, on the ring and just off the world. The clicked tile,
// all 40 slots and the selection go into one digest, worked out once by a separate
// script from the placing, reach and tile rules. Of its clicks 486 place a block,
// 32 of them in a cell touching the body (at least 5 on each side); refusals: the
// ring or off the world 4,301, reach 2,016, an occupied cell 4,041, the hand
// 1,163, no support 72, the player's body 41.
#include <gtest/gtest.h>

#include <memory>

#include "core/game_digest.h"
#include "core/tiles.h"
#include "sim/placing.h"
#include "random_walk.h"

TEST(Placing, ARandomWalkOfTilesPositionsHandsAndClicksFollowsTheRules) {
    constexpr std::uint8_t TILES[] = {0, 0, 0, 0, 0, 0, TILE_STONE, TILE_LEAVES, TILE_TORCH, TILE_DIRT};
    constexpr std::uint16_t HELD[] = {TILE_DIRT, TILE_DIRT, TILE_BEDROCK, ITEM_WORN_PICK, 0,
                                      TILE_LEAVES, TILE_TORCH, TILE_GLOW_CRYSTAL, TILE_MAX + 1};
    constexpr std::uint32_t SELECTED[] = {0, 3, 9, 12, INVENTORY_SLOTS};
    Walk next{3005u};
    std::uint32_t h = FNV1A_OFFSET;
    // 0..n-1 counted in from `edge`: up from a low edge, down from a high one.
    const auto from = [&next](int edge, std::uint32_t n) {
        const int k = static_cast<int>(next(n));
        return edge > 0 ? edge - k : edge + k;
    };
    // Standing on a row or against a column now and then, so that cells touching the body come up.
    constexpr int X_OFFSETS[] = {4, 0, 7, 2}, Y_OFFSETS[] = {6, 0, 11, 3};
    const auto g = std::make_unique<Game>();
    Player& p = g->player;
    for (int step = 0; step < 20000; ++step) {
        const std::uint32_t op = next(10);
        const bool far = step / 2000 % 2 == 1;
        if (op < 2) {
            const int col = from(far ? WORLD_W - 1 : 0, 12), row = from(far ? WORLD_H - 1 : 0, 12);
            tile_at(*g, col, row) = TILES[next(10)];
        } else if (op < 3) {
            const int x = 16 * static_cast<int>(next(5));
            p.x = static_cast<float>((far ? 8176 - x : x) + X_OFFSETS[next(4)]);
            const int y = 16 * static_cast<int>(next(5));
            p.y = static_cast<float>((far ? 2544 - y : y) + Y_OFFSETS[next(4)]);
        } else if (op < 4) {
            p.selected = SELECTED[next(5)];
            const std::uint16_t item = HELD[next(9)], count = static_cast<std::uint16_t>(1 + next(3));
            if (p.selected < INVENTORY_SLOTS) p.inventory[p.selected] = {item, item != 0 ? count : std::uint16_t{0}};
        } else {
            int tx = 0, ty = 0;
            if (next(2) != 0) {  // on or around the player's body
                tx = static_cast<int>(p.x) / 16 + static_cast<int>(next(4)) - 1;
                ty = static_cast<int>(p.y) / 16 + static_cast<int>(next(5)) - 1;
            } else {
                tx = from(far ? WORLD_W : -1, 12);
                ty = from(far ? WORLD_H : -1, 12);
            }
            game_place(g.get(), tx, ty);
            const std::uint8_t tile = in_grid(tx, ty) ? tile_at(*g, tx, ty) : 255;
            h = fnv1a(&tile, 1, h);
        }
        h = fnv1a(&p.selected, sizeof p.selected, fnv1a(p.inventory, sizeof p.inventory, h));
    }
    EXPECT_EQ(0xBEDDF4B6u, h);
}
