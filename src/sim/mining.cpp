#include "sim/mining.h"

#include <cstdlib>

#include "core/tiles.h"
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

constexpr float STRIKE_COOLDOWN = 0.28f;
constexpr float STRIKE_FLASH = 0.18f;
constexpr float KNOCKBACK_X = 145.0f;
constexpr float KNOCKBACK_Y = -95.0f;

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

std::int32_t sword_damage(std::uint32_t item) { return item == ITEM_IRON_SWORD ? 7 : 4; }

// A creature whose centre tile is within one tile of (tx, ty) on both axes.
// Strikes come before the grid test, so tx, ty may be far off: subtract in 64 bits.
bool under_pointer(const Creature& c, std::int32_t tx, std::int32_t ty) {
    const std::int64_t col = static_cast<std::int32_t>((c.x + 7.0f) / 16.0f);
    const std::int64_t row = static_cast<std::int32_t>((c.y + 7.0f) / 16.0f);
    return std::llabs(col - tx) < 2 && std::llabs(row - ty) < 2;
}

// Returns whether a creature was struck; a strike replaces mining for the frame.
bool try_strike(Game* game, std::int32_t tx, std::int32_t ty) {
    Player& p = game->player;
    const std::uint32_t held = held_item(p);
    if (tool_kind(held) != SWORD_TOOL || p.attack_cooldown > 0.0f) return false;
    for (Creature& c : game->creatures) {
        if (!c.alive || !under_pointer(c, tx, ty)) continue;
        c.vx = c.x < p.x ? -KNOCKBACK_X : KNOCKBACK_X;
        c.vy = KNOCKBACK_Y;
        c.hp -= sword_damage(held);
        c.flash = STRIKE_FLASH;
        p.attack_cooldown = STRIKE_COOLDOWN;
        if (c.hp <= 0) {
            c.alive = 0;
            spawn_drop(game, TILE_COAL, c.x, c.y);
        }
        return true;
    }
    return false;
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
    if (try_strike(game, tx, ty)) return;
    if (!in_grid(tx, ty)) return;
    mine_tile(game, tx, ty, dt);
}
