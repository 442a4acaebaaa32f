#include "sim/update.h"

#include <cmath>

#include "core/geometry.h"
#include "sim/autosave.h"
#include "sim/camera.h"
#include "sim/creatures.h"
#include "sim/day_clock.h"
#include "sim/drops.h"
#include "sim/mining.h"
#include "sim/placing.h"
#include "sim/player_motion.h"

namespace {

// A stalled frame never advances the world by more than this.
constexpr float MAX_DT = 0.05f;

void count_down(float& timer, float dt) {
    if (timer > 0.0f) timer = timer - dt;
}

void act(Game* game, const FrameInput& in, float dt) {
    const int tx = tile_under(game->camera_x, in.mouse_x);
    const int ty = tile_under(game->camera_y, in.mouse_y);
    if (in.use_held) game_attack_or_mine(game, tx, ty, dt);
    else game->player.mine_progress = 0.0f;
    if (in.place) game_place(game, tx, ty);
}

}  // namespace

void game_update(Game* game, const FrameInput* input, float dt) {
    if (game->screen != SCREEN_PLAYING || !game->world_open) return;
    dt = std::fmin(dt, MAX_DT);
    Player& p = game->player;

    player_move(game, *input, dt);
    count_down(p.hurt_timer, dt);
    count_down(p.attack_cooldown, dt);

    act(game, *input, dt);
    day_clock_step(game, dt);
    creatures_spawn_step(game, dt);
    creatures_step(game, dt);
    drops_step(game, dt);
    camera_follow(game, dt);
    count_down(game->notice_timer, dt);
    autosave_count(game, dt);
}
