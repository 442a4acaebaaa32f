#include "sim/mining.h"

#include "core/inventory.h"
#include "core/tiles.h"
#include "sim/combat.h"
#include "sim/drops.h"
#include "sim/reach.h"

namespace {

enum ToolKind { WORN_PICK_TOOL, IRON_PICK_TOOL, SWORD_TOOL, BARE_HAND, TOOL_KINDS };
enum Material { HARD_MATERIAL, SOFT_MATERIAL, MATERIALS };

// Mining work per second by material and tool. The worn pick is slower than a
// bare hand on soft and wooden tiles; that is intended.
constexpr float MINING_SPEED[MATERIALS][TOOL_KINDS] = {
    {2.0f, 4.2f, 0.35f, 1.0f},  // stone, ores, crystal, stone brick
    {0.8f, 1.2f, 0.35f, 1.0f},  // earth, sand, clay, wood, leaves, planks, workbench, torch
};

ToolKind tool_kind(std::uint32_t item) {
    switch (item) {
        case ITEM_WORN_PICK: return WORN_PICK_TOOL;
        case ITEM_IRON_PICK: return IRON_PICK_TOOL;
        case ITEM_SHORT_SWORD:
        case ITEM_IRON_SWORD: return SWORD_TOOL;
        default: return BARE_HAND;
    }
}

Material material(std::uint32_t tile) {
    switch (tile) {
        case TILE_STONE:
        case TILE_COAL:
        case TILE_COPPER_ORE:
        case TILE_IRON_ORE:
        case TILE_GLOW_CRYSTAL:
        case TILE_STONE_BRICK: return HARD_MATERIAL;
        default: return SOFT_MATERIAL;
    }
}

void mine_tile(Game* game, std::int32_t tx, std::int32_t ty, float dt) {
    Player& p = game->player;
    const std::uint8_t tile = tile_at(*game, tx, ty);
    if (tile == TILE_EMPTY || tile == TILE_BEDROCK) {
        p.mine_progress = 0.0f;
        return;
    }
    const std::uint32_t held = held_item(p);
    if (tile == TILE_GLOW_CRYSTAL && held != ITEM_IRON_PICK) {
        p.mine_progress = 0.0f;
        game_notice(game, "IRON PICK REQUIRED");
        return;
    }
    if (tx != p.mine_x || ty != p.mine_y) {
        p.mine_x = tx;
        p.mine_y = ty;
        p.mine_progress = 0.0f;
    }
    p.mine_progress = p.mine_progress + dt * MINING_SPEED[material(tile)][tool_kind(held)];
    if (p.mine_progress >= tile_hardness(tile)) {
        tile_at(*game, tx, ty) = TILE_EMPTY;
        spawn_drop(game, tile_drop(tile), static_cast<float>(tx * 16 + 4), static_cast<float>(ty * 16 + 3));
        p.mine_progress = 0.0f;
    }
}

}  // namespace

void game_attack_or_mine(Game* game, std::int32_t tx, std::int32_t ty, float dt) {
    Player& p = game->player;
    if (!within_reach(p, tx, ty)) {
        p.mine_progress = 0.0f;
        return;
    }
    // The creature strike comes before the bounds test: it works off the grid too.
    // A strike replaces mining for the frame.
    if (strike_creature(game, tx, ty)) return;
    if (!in_grid(tx, ty)) return;
    mine_tile(game, tx, ty, dt);
}
