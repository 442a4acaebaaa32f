#include "sim/drops.h"

#include "core/geometry.h"
#include "core/hash.h"
#include "core/inventory.h"
#include "sim/movement.h"

namespace {

constexpr float DROP_SIZE = 8.0f;
constexpr float DROP_LIFETIME = 40.0f;
constexpr float DROP_GRAVITY = 540.0f;
constexpr float DROP_MAX_FALL = 260.0f;
constexpr float DROP_POP = -75.0f;
// Per frame, not per second: a resting drop slides to a stop in a few frames.
constexpr float DROP_GROUND_FRICTION = 0.85f;
constexpr float PICKUP_RADIUS_SQ = 1156.0f;  // 34 px

// Sideways scatter from -10.5 to +10.5 px/s in steps of 0.7.
float scatter(std::uint32_t h) {
    const int step = static_cast<int>(h % 31u) - 15;
    return static_cast<float>(step) * 0.7f;
}

Drop* free_drop(Game* game, std::uint32_t* index) {
    for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(MAX_DROPS); ++i) {
        if (!game->drops[i].active) {
            *index = i;
            return &game->drops[i];
        }
    }
    return nullptr;
}

// Measured to the drop's top-left corner on purpose, not to its centre.
bool near_player(const Player& p, const Drop& d) {
    const float dx = player_centre_x(p) - d.x;
    const float dy = player_centre_y(p) - d.y;
    return dx * dx + dy * dy < PICKUP_RADIUS_SQ;
}

void step_drop(Game* game, Drop& d, float dt) {
    d.vy = d.vy + DROP_GRAVITY * dt;
    if (d.vy > DROP_MAX_FALL) d.vy = DROP_MAX_FALL;
    std::uint8_t landed = 0;
    move_box(game, &d.x, &d.y, &d.vx, &d.vy, &landed, DROP_SIZE, DROP_SIZE, dt);
    if (landed) d.vx = d.vx * DROP_GROUND_FRICTION;
    d.lifetime = d.lifetime - dt;
    // All or nothing: a drop that does not fit stays and is tried again next frame.
    if (near_player(game->player, d) &&
        inventory_add(&game->player, static_cast<std::int32_t>(d.item), static_cast<std::int32_t>(d.count)))
        d.active = 0;
    if (d.lifetime <= 0.0f) d.active = 0;
}

}  // namespace

void spawn_drop(Game* game, std::uint32_t item, float x, float y) {
    std::uint32_t i = 0;
    Drop* d = free_drop(game, &i);
    if (d == nullptr) {
        // No table slot: straight into the inventory, or lost when that is full.
        inventory_add(&game->player, static_cast<std::int32_t>(item), 1);
        return;
    }
    const std::uint32_t h = world_hash(game->seed, static_cast<std::uint32_t>(game->tick), i);
    d->x = x;
    d->y = y;
    d->vx = scatter(h);
    d->vy = DROP_POP;
    d->item = item;
    d->count = 1;
    d->lifetime = DROP_LIFETIME;
    d->active = 1;
}

void drops_step(Game* game, float dt) {
    for (Drop& d : game->drops)
        if (d.active) step_drop(game, d, dt);
}
