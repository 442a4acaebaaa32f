#include "sim/creatures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/geometry.h"
#include "core/hash.h"
#include "core/tiles.h"
#include "sim/day_clock.h"
#include "sim/movement.h"

namespace {

constexpr float CREATURE_SIZE = 14.0f;

struct KindStats {
    std::int32_t hp;
    float chase_accel;  // px/s^2
    float speed_limit;  // px/s
    std::int32_t damage;
};
constexpr KindStats KINDS[2] = {
    {5, 65.0f, 38.0f, 1},
    {7, 92.0f, 52.0f, 2},
};

constexpr float CHASE_RANGE = 220.0f;
constexpr float WANDER_SPEED = 22.0f;
constexpr float WANDER_RESUME_BELOW = 12.0f;
constexpr float HOP_SPEED = -150.0f;
constexpr float CREATURE_GRAVITY = 680.0f;
constexpr float CREATURE_MAX_FALL = 350.0f;
constexpr float DESPAWN_DISTANCE = 1152.0f;
constexpr float CONTACT_COOLDOWN = 1.0f;
constexpr float PLAYER_HURT_TIME = 1.0f;
constexpr float PLAYER_KNOCKBACK_X = 125.0f;
constexpr float PLAYER_KNOCKBACK_Y = -120.0f;
constexpr float NIGHT_SPAWN_INTERVAL = 2.2f;
constexpr float DAY_SPAWN_INTERVAL = 5.5f;

// Spawn geometry, in tiles.
constexpr std::uint32_t SPAWN_MIN_DISTANCE = 14;
constexpr std::uint32_t SPAWN_DISTANCE_SPREAD = 9;  // 14..22
constexpr int SPAWN_FIRST_COLUMN = 3;
constexpr int SPAWN_END_COLUMN = 509;  // exclusive

const KindStats& stats(const Creature& c) { return KINDS[c.kind == 1 ? 1 : 0]; }

int find_free_slot(const Game* game) {
    for (int i = 0; i < MAX_CREATURES; ++i)
        if (!game->creatures[i].alive) return i;
    return -1;
}

// Two free cells with solid ground under them.
bool standing_room(const Game& g, int c, int k) {
    return tile_at(g, c, k) == TILE_EMPTY && tile_at(g, c, k + 1) == TILE_EMPTY &&
           tile_solid(tile_at(g, c, k + 2));
}

// The qualifying row nearest the player's middle row; the higher one wins a tie.
// Returns -1 when the column has no standing room in the band.
int spawn_row(const Game& g, int c, int pr) {
    const int first = std::max(pr, 14) - 13;
    const int last = std::min(pr, 145) + 11;
    int best = -1;
    int best_gap = 0;
    for (int k = first; k <= last; ++k) {
        if (!standing_room(g, c, k)) continue;
        const int gap = std::abs(k + 1 - pr);
        if (best < 0 || gap < best_gap) {
            best = k;
            best_gap = gap;
        }
    }
    return best;
}

void chase_or_wander(const Player& p, Creature& c, const KindStats& k, float dt) {
    if (std::fabs(p.x - c.x) < CHASE_RANGE) {
        const float a = p.x - c.x < 0.0f ? -k.chase_accel : k.chase_accel;
        c.vx = c.vx + a * dt;
    } else if (c.on_ground && std::fabs(c.vx) < WANDER_RESUME_BELOW) {
        c.vx = static_cast<float>(c.dir) * WANDER_SPEED;
    }
    c.vx = std::clamp(c.vx, -k.speed_limit, k.speed_limit);
    c.dir = c.vx < 0.0f ? -1 : 1;
}

// Hops when the cell one pixel past its leading edge, at mid height, is blocked.
void hop_if_blocked(const Game& g, Creature& c) {
    if (!c.on_ground) return;
    const float ahead = c.vx < 0.0f ? -1.0f : 15.0f;
    const int col = static_cast<int>(std::floor((c.x + ahead) / 16.0f));
    const int row = static_cast<int>(std::floor((c.y + 7.0f) / 16.0f));
    if (!in_grid(col, row) || tile_solid(tile_at(g, col, row))) c.vy = HOP_SPEED;
}

bool touches_player(const Creature& c, const Player& p) {
    return c.x + CREATURE_SIZE > p.x && c.x < p.x + PLAYER_W && c.y + CREATURE_SIZE > p.y && c.y < p.y + PLAYER_H;
}

// Full health back at the world's spawn; nothing else is lost.
void respawn_player(Game* game) {
    Player& p = game->player;
    p.hp = p.max_hp;
    player_to_spawn(game);
    p.vx = 0.0f;
    p.vy = 0.0f;
    game_notice(game, "THE GLIMWICK BRINGS YOU BACK");
}

void hurt_player(Game* game, const Creature& c, const KindStats& k) {
    Player& p = game->player;
    if (p.hurt_timer > 0.0f) return;
    p.hurt_timer = PLAYER_HURT_TIME;
    p.vx = p.x < c.x ? -PLAYER_KNOCKBACK_X : PLAYER_KNOCKBACK_X;
    p.vy = PLAYER_KNOCKBACK_Y;
    p.hp -= k.damage;
    if (p.hp <= 0) respawn_player(game);
}

void step_creature(Game* game, Creature& c, float dt) {
    const KindStats& k = stats(c);
    Player& p = game->player;
    chase_or_wander(p, c, k, dt);
    hop_if_blocked(*game, c);
    c.vy = c.vy + CREATURE_GRAVITY * dt;
    if (c.vy > CREATURE_MAX_FALL) c.vy = CREATURE_MAX_FALL;
    move_box(game, &c.x, &c.y, &c.vx, &c.vy, &c.on_ground, CREATURE_SIZE, CREATURE_SIZE, dt);
    c.hit_cooldown = c.hit_cooldown - dt;
    c.flash = c.flash - dt;
    // A creature touching an invulnerable player still spends its attack.
    if (touches_player(c, p) && c.hit_cooldown <= 0.0f) {
        hurt_player(game, c, k);
        c.hit_cooldown = CONTACT_COOLDOWN;
    }
    if (std::fabs(c.x - p.x) > DESPAWN_DISTANCE || c.y > static_cast<float>(WORLD_PIXEL_H)) c.alive = 0;
}

}  // namespace

bool creatures_try_spawn(Game* game) {
    const int i = find_free_slot(game);
    if (i < 0) return false;
    const std::uint32_t seed = game->seed;
    const std::uint32_t tick = static_cast<std::uint32_t>(game->tick);
    const std::uint32_t slot = static_cast<std::uint32_t>(i);

    const int side = (world_hash(seed, tick, slot) & 1u) ? 1 : -1;
    const int distance = static_cast<int>(world_hash(seed, slot, tick) % SPAWN_DISTANCE_SPREAD + SPAWN_MIN_DISTANCE);
    const Player& p = game->player;
    const int pc = static_cast<int>(p.x / 16.0f);
    const int c = pc + side * distance;
    // Refused, not mirrored: near a world edge only the inward side spawns.
    if (c < SPAWN_FIRST_COLUMN || c >= SPAWN_END_COLUMN) return false;
    const int pr = static_cast<int>(player_centre_y(p) / 16.0f);
    const int k = spawn_row(*game, c, pr);
    if (k < 0) return false;

    const std::int32_t kind = static_cast<std::int32_t>(world_hash(seed, static_cast<std::uint32_t>(c), tick) & 1u);
    Creature& cr = game->creatures[i];
    cr.x = static_cast<float>(c * 16 + 1);
    cr.y = static_cast<float>((k + 1) * 16);
    cr.vx = static_cast<float>(side * -20);
    cr.vy = 0.0f;
    cr.hp = KINDS[kind].hp;
    cr.kind = kind;
    cr.dir = -side;
    cr.hit_cooldown = 0.0f;
    cr.flash = 0.0f;
    cr.alive = 1;
    cr.on_ground = 0;
    return true;
}

// The timer is rearmed whether or not a creature appeared.
void creatures_spawn_step(Game* game, float dt) {
    const float interval = is_night(game->time_of_day) ? NIGHT_SPAWN_INTERVAL : DAY_SPAWN_INTERVAL;
    game->creature_spawn_timer = game->creature_spawn_timer - dt;
    if (game->creature_spawn_timer > 0.0f) return;
    creatures_try_spawn(game);
    game->creature_spawn_timer = interval;
}

void creatures_step(Game* game, float dt) {
    for (Creature& c : game->creatures)
        if (c.alive) step_creature(game, c, dt);
}
