#include "sim/player_motion.h"

#include <cmath>

#include "core/geometry.h"
#include "sim/movement.h"

namespace {

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

// Uses the ground flag of the previous frame's move: no jump buffering. The flag
// needs no clearing here: the move that follows works it out afresh.
void jump_and_fall(Player& p, const FrameInput& in, float dt) {
    if (in.jump_pressed && p.on_ground) p.vy = JUMP_SPEED;
    if (p.vy < SHORT_HOP_ABOVE && !in.jump_held) p.vy = p.vy + SHORT_HOP_GRAVITY * dt;
    p.vy = p.vy + GRAVITY * dt;
    if (p.vy > TERMINAL_FALL) p.vy = TERMINAL_FALL;
}

}  // namespace

void player_move(Game* game, const FrameInput& input, float dt) {
    Player& p = game->player;
    steer(p, horizontal_target(input), dt);
    jump_and_fall(p, input, dt);
    move_box(game, &p.x, &p.y, &p.vx, &p.vy, &p.on_ground, PLAYER_W, PLAYER_H, dt);
}
