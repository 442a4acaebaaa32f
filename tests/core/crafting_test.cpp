// Crafting under a random walk near the world's top left corner, then its bottom
// right one, changing every 2,000 steps: one workbench moved about, the player
// moved about (a hair off the world too, where the tile under the body's centre
// truncates toward zero), materials and filler added and taken, and every recipe
// index tried, past the table included. Each step's result, notice, notice timer
// and all 40 slots go into one digest, worked out once by a separate script
// from the recipe table and the crafting and inventory rules. Every recipe is
// crafted at least 250 times; "INVENTORY FULL" comes 13 times, "PLACE A WORKBENCH
// NEARBY" 1,337 times and "MISSING MATERIALS" 458 times.
#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <memory>

#include "core/crafting.h"
#include "core/game_digest.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "random_walk.h"

TEST(Crafting, ARandomWalkOfBenchesMaterialsAndRecipesFollowsTheRules) {
    constexpr std::int32_t ITEMS[] = {TILE_WOOD, TILE_COAL, TILE_STONE, TILE_IRON_ORE, TILE_PLANK, TILE_DIRT};
    Walk next{1124u};
    std::uint32_t h = FNV1A_OFFSET;
    const auto quarters = [&next](std::uint32_t n) { return 0.25f * static_cast<float>(next(n)); };
    const auto g = std::make_unique<Game>();
    int bench_col = 0, bench_row = 0;
    for (int step = 0; step < 20000; ++step) {
        const std::uint32_t op = next(10);
        const bool far = step / 2000 % 2 == 1;
        std::uint32_t result = 0;
        std::memset(g->notice, 0, sizeof g->notice);
        g->notice_timer = 0.0f;
        if (op < 2) {  // the workbench moved to within 14 tiles of the corner
            tile_at(*g, bench_col, bench_row) = TILE_EMPTY;
            bench_col = static_cast<int>(far ? WORLD_W - 1 - next(14) : next(14));
            bench_row = static_cast<int>(far ? WORLD_H - 1 - next(14) : next(14));
            tile_at(*g, bench_col, bench_row) = TILE_WORKBENCH;
        } else if (op < 3) {  // the body's centre in the corner's 13 x 13 tiles, or up to 4 px off the world
            g->player.x = far ? 8180.0f - quarters(800) : quarters(800) - 10.0f;
            g->player.y = far ? 2534.0f - quarters(800) : quarters(800) - 16.0f;
        } else if (op < 6) {
            const std::int32_t item = ITEMS[next(6)];
            if (op < 5) {
                const std::uint32_t count = next(3) == 0 ? next(40000) : next(14);  // a few, or packs full of them
                result = inventory_add(&g->player, item, static_cast<std::int32_t>(count));
            } else {
                result = inventory_remove(&g->player, item, static_cast<std::int32_t>(next(4000)));
            }
        } else {
            const std::uint32_t index = next(8);
            result = craft_recipe(g.get(), index == 7 ? 0xFFFFFFFFu : index);
        }
        const std::uint32_t words[] = {result, std::bit_cast<std::uint32_t>(g->notice_timer)};
        h = fnv1a(g->player.inventory, sizeof g->player.inventory, fnv1a(words, sizeof words, h));
        h = fnv1a(g->notice, sizeof g->notice, h);
    }
    EXPECT_EQ(0x197BCFDFu, h);
}
