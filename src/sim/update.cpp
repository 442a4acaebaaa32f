#include "sim/update.h"

#include <cmath>

#include "save/save_file.h"
#include "save/save_path.h"
#include "sim/creatures.h"
#include "sim/drops.h"
#include "sim/mining.h"
#include "sim/movement.h"
#include "sim/placing.h"

namespace {

// A stalled frame never advances the world by more than this.
constexpr float MAX_DT = 0.05f;

constexpr float RUN_SPEED = 105.0f;
constexpr float GROUND_ACCEL = 760.0f;
constexpr float AIR_ACCEL = 390.0f;
constexpr float GROUND_FRICTION = 820.0f;
constexpr float JUMP_SPEED = -258.0f;
// Letting go of jump while still rising fast cuts the hop short.
constexpr float SHORT_HOP_ABOVE = -100.0f;
constexpr float SHORT_HOP_GRAVITY = 520.0f;
constexpr float GRAVITY = 720.0f;
constexpr float TERMINAL_FALL = 390.0f;
constexpr float PLAYER_W = 12.0f;
constexpr float PLAYER_H = 26.0f;

constexpr float DAY_SECONDS = 240.0f;
constexpr float NIGHT_FROM = 0.55f;  // both bounds exclusive
constexpr float NIGHT_UNTIL = 0.92f;
constexpr float NIGHT_SPAWN_INTERVAL = 2.2f;
constexpr float DAY_SPAWN_INTERVAL = 5.5f;

constexpr float CAMERA_LOOK_AHEAD = 30.0f;
constexpr float CAMERA_RATE_X = 5.5f;
constexpr float CAMERA_RATE_Y = 4.2f;
constexpr float CAMERA_MAX_X = 7552.0f;  // world width less the view
constexpr float CAMERA_MAX_Y = 2200.0f;

constexpr float AUTOSAVE_SECONDS = 45.0f;

float clampf(float v, float lo, float hi) { return v < lo ? lo : (v > hi ? hi : v); }

float horizontal_target(const FrameInput& in) {
    if (in.left && in.right) return 0.0f;
    if (in.left) return -RUN_SPEED;
    if (in.right) return RUN_SPEED;
    return 0.0f;
}

void steer(Player& p, float target, float dt) {
    if (target != 0.0f) {
        const float a = p.on_ground ? GROUND_ACCEL : AIR_ACCEL;
        if (p.vx < target) p.vx = std::fmin(target, p.vx + a * dt);
        if (p.vx > target) p.vx = std::fmax(target, p.vx - a * dt);
        p.facing = target < 0.0f ? -1 : 1;
        return;
    }
    if (!p.on_ground) return;  // no air drag
    const float f = GROUND_FRICTION * dt;
    if (std::fabs(p.vx) <= f) p.vx = 0.0f;
    else p.vx = p.vx > 0.0f ? p.vx - f : p.vx + f;
}

// Uses the ground flag of the previous frame's move: no jump buffering.
void jump_and_fall(Player& p, const FrameInput& in, float dt) {
    if (in.jump_pressed && p.on_ground) {
        p.vy = JUMP_SPEED;
        p.on_ground = 0;
    }
    if (p.vy < SHORT_HOP_ABOVE && !in.jump_held) p.vy = p.vy + SHORT_HOP_GRAVITY * dt;
    p.vy = p.vy + GRAVITY * dt;
    if (p.vy > TERMINAL_FALL) p.vy = TERMINAL_FALL;
}

void count_down(float& timer, float dt) {
    if (timer > 0.0f) timer = timer - dt;
}

int pointer_cell(float camera, std::int32_t mouse) {
    return static_cast<int>(std::floor((camera + static_cast<float>(mouse)) / 16.0f));
}

void act(Game* game, const FrameInput& in, float dt) {
    const int tx = pointer_cell(game->camera_x, in.mouse_x);
    const int ty = pointer_cell(game->camera_y, in.mouse_y);
    if (in.use_held) game_attack_or_mine(game, tx, ty, dt);
    else game->player.mine_progress = 0.0f;
    if (in.place) game_place(game, tx, ty);
}

void advance_clock_and_tick(Game* game, float dt) {
    game->time_of_day = game->time_of_day + dt / DAY_SECONDS;
    if (game->time_of_day >= 1.0f) {
        game->time_of_day = game->time_of_day - 1.0f;
        game->day += 1;
    }
    game->tick += 1;
}

bool is_night(float t) { return NIGHT_FROM < t && t < NIGHT_UNTIL; }

// The timer is rearmed whether or not a creature appeared.
void spawn_creatures(Game* game, float dt) {
    const float interval = is_night(game->time_of_day) ? NIGHT_SPAWN_INTERVAL : DAY_SPAWN_INTERVAL;
    game->creature_spawn_timer = game->creature_spawn_timer - dt;
    if (game->creature_spawn_timer > 0.0f) return;
    creatures_try_spawn(game);
    game->creature_spawn_timer = interval;
}

// Eases towards the player's centre, looking a little ahead, and never shows
// anything outside the world.
void follow_camera(Game* game, float dt) {
    const Player& p = game->player;
    const float target_x = p.x + 6.0f - 320.0f + CAMERA_LOOK_AHEAD * static_cast<float>(p.facing);
    const float target_y = p.y + 13.0f - 190.79999f;
    game->camera_x = game->camera_x + (target_x - game->camera_x) * std::fmin(CAMERA_RATE_X * dt, 1.0f);
    game->camera_y = game->camera_y + (target_y - game->camera_y) * std::fmin(CAMERA_RATE_Y * dt, 1.0f);
    game->camera_x = clampf(game->camera_x, 0.0f, CAMERA_MAX_X);
    game->camera_y = clampf(game->camera_y, 0.0f, CAMERA_MAX_Y);
}

// A failed save only says so; play goes on and the next try is 45 s later.
void autosave(Game* game, float dt) {
    game->autosave_timer = game->autosave_timer + dt;
    if (game->autosave_off || game->autosave_timer < AUTOSAVE_SECONDS) return;
    const bool saved = game_save(game, game_default_save_path());
    game->autosave_timer = 0.0f;
    game_notice(game, saved ? "WORLD SAVED" : "SAVE FAILED - WORLD STILL OPEN");
}

}  // namespace

void game_update(Game* game, const FrameInput* input, float dt) {
    if (game->screen != SCREEN_PLAYING || !game->world_open) return;
    dt = std::fmin(dt, MAX_DT);
    Player& p = game->player;

    steer(p, horizontal_target(*input), dt);
    jump_and_fall(p, *input, dt);
    move_box(game, &p.x, &p.y, &p.vx, &p.vy, &p.on_ground, PLAYER_W, PLAYER_H, dt);
    count_down(p.hurt_timer, dt);
    count_down(p.attack_cooldown, dt);

    act(game, *input, dt);
    advance_clock_and_tick(game, dt);
    spawn_creatures(game, dt);
    creatures_step(game, dt);
    drops_step(game, dt);
    follow_camera(game, dt);
    count_down(game->notice_timer, dt);
    autosave(game, dt);
}
