#include "core/crafting.h"

#include "core/geometry.h"
#include "core/inventory.h"
#include "core/tiles.h"

// Order matters: every recipe after the first four needs a workbench nearby.
const Recipe RECIPES[RECIPE_COUNT] = {
    {TILE_PLANK, 4, TILE_WOOD, 1, 0, 0},
    {TILE_TORCH, 4, TILE_WOOD, 1, TILE_COAL, 1},
    {TILE_STONE_BRICK, 4, TILE_STONE, 4, 0, 0},
    {TILE_WORKBENCH, 1, TILE_WOOD, 10, 0, 0},
    {ITEM_IRON_PICK, 1, TILE_IRON_ORE, 8, TILE_WOOD, 4},
    {ITEM_IRON_SWORD, 1, TILE_IRON_ORE, 6, TILE_WOOD, 2},
};

namespace {

constexpr std::uint32_t FIRST_BENCH_RECIPE = 4;
constexpr int BENCH_RANGE = 4;  // tiles in each direction from the player's tile

bool needs_workbench(std::uint32_t index) { return index >= FIRST_BENCH_RECIPE; }

bool workbench_near(const Game* game) {
    const int px = static_cast<int>(player_centre_x(game->player) * 0.0625f);
    const int py = static_cast<int>(player_centre_y(game->player) * 0.0625f);
    for (int row = py - BENCH_RANGE; row <= py + BENCH_RANGE; ++row)
        for (int col = px - BENCH_RANGE; col <= px + BENCH_RANGE; ++col)
            if (in_grid(col, row) && tile_at(*game, col, row) == TILE_WORKBENCH) return true;
    return false;
}

bool holds(const Player* p, std::uint32_t item, std::uint32_t count) {
    return inventory_count(p, static_cast<std::int32_t>(item)) >= count;
}

bool has_materials(const Player* p, const Recipe& r) {
    if (!holds(p, r.in1_item, r.in1_count)) return false;
    return r.in2_item == 0 || holds(p, r.in2_item, r.in2_count);
}

void take_inputs(Player* p, const Recipe& r) {
    inventory_remove(p, static_cast<std::int32_t>(r.in1_item), static_cast<std::int32_t>(r.in1_count));
    if (r.in2_item != 0)
        inventory_remove(p, static_cast<std::int32_t>(r.in2_item), static_cast<std::int32_t>(r.in2_count));
}

// Totals come back; the slot layout may differ from before the craft.
void refund_inputs(Player* p, const Recipe& r) {
    inventory_add(p, static_cast<std::int32_t>(r.in1_item), static_cast<std::int32_t>(r.in1_count));
    if (r.in2_item != 0)
        inventory_add(p, static_cast<std::int32_t>(r.in2_item), static_cast<std::int32_t>(r.in2_count));
}

}  // namespace

bool craft_recipe(Game* game, std::uint32_t index) {
    if (index >= static_cast<std::uint32_t>(RECIPE_COUNT)) return false;
    const Recipe& r = RECIPES[index];
    Player* p = &game->player;

    // The workbench is asked for before the materials, even when both are missing.
    if (needs_workbench(index) && !workbench_near(game)) {
        game_notice(game, "PLACE A WORKBENCH NEARBY");
        return false;
    }
    if (!has_materials(p, r)) {
        game_notice(game, "MISSING MATERIALS");
        return false;
    }
    take_inputs(p, r);
    if (!inventory_add(p, static_cast<std::int32_t>(r.out_item), static_cast<std::int32_t>(r.out_count))) {
        refund_inputs(p, r);
        game_notice(game, "INVENTORY FULL");
        return false;
    }
    game_notice(game, "CRAFTED");
    return true;
}
