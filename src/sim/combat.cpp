#include "sim/combat.h"

#include <cstdlib>

#include "core/inventory.h"
#include "core/tiles.h"
#include "sim/drops.h"

namespace {

constexpr float STRIKE_COOLDOWN = 0.28f;
constexpr float STRIKE_FLASH = 0.18f;
constexpr float KNOCKBACK_X = 145.0f;
constexpr float KNOCKBACK_Y = -95.0f;

// The short sword takes a small creature (5 hp) in two strikes and a large one
// (7 hp) in two; the iron sword fells either in one.
constexpr std::int32_t SHORT_SWORD_DAMAGE = 4;
constexpr std::int32_t IRON_SWORD_DAMAGE = 7;

std::int32_t sword_damage(std::uint32_t item) {
    return item == ITEM_IRON_SWORD ? IRON_SWORD_DAMAGE : SHORT_SWORD_DAMAGE;
}

// A creature whose centre tile is within one tile of (tx, ty) on both axes.
// Strikes come before the grid test, so tx, ty may be far off: subtract in 64 bits.
bool under_pointer(const Creature& c, std::int32_t tx, std::int32_t ty) {
    const std::int64_t col = static_cast<std::int32_t>((c.x + 7.0f) / 16.0f);
    const std::int64_t row = static_cast<std::int32_t>((c.y + 7.0f) / 16.0f);
    return std::llabs(col - tx) < 2 && std::llabs(row - ty) < 2;
}

bool holds_sword(const Player& p) {
    const std::uint32_t held = held_item(p);
    return held == ITEM_SHORT_SWORD || held == ITEM_IRON_SWORD;
}

}  // namespace

bool strike_creature(Game* game, std::int32_t tx, std::int32_t ty) {
    Player& p = game->player;
    if (!holds_sword(p) || p.attack_cooldown > 0.0f) return false;
    for (Creature& c : game->creatures) {
        if (!c.alive || !under_pointer(c, tx, ty)) continue;
        c.vx = c.x < p.x ? -KNOCKBACK_X : KNOCKBACK_X;
        c.vy = KNOCKBACK_Y;
        c.hp -= sword_damage(held_item(p));
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
