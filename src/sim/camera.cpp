#include "sim/camera.h"

#include <algorithm>
#include <cmath>

#include "core/geometry.h"

namespace {

constexpr float CAMERA_LOOK_AHEAD = 30.0f;
constexpr float CAMERA_RATE_X = 5.5f;
constexpr float CAMERA_RATE_Y = 4.2f;
// The player's centre rests a little below the middle of the view (180), so a
// bit more shows above the head than below the feet. Written 190.79999f, not
// 190.8f: those are two different floats, and this one is the game's.
constexpr float CAMERA_CENTRE_Y = 190.79999f;
// The camera's corner stops where the view's far edge meets the world's:
// 8192 - 640 = 7552 and 2560 - 360 = 2200.
constexpr float CAMERA_MAX_X = static_cast<float>(WORLD_PIXEL_W - VIEW_W);
constexpr float CAMERA_MAX_Y = static_cast<float>(WORLD_PIXEL_H - VIEW_H);

}  // namespace

void camera_follow(Game* game, float dt) {
    const Player& p = game->player;
    const float target_x = player_centre_x(p) - VIEW_HALF_W + CAMERA_LOOK_AHEAD * static_cast<float>(p.facing);
    const float target_y = player_centre_y(p) - CAMERA_CENTRE_Y;
    game->camera_x = game->camera_x + (target_x - game->camera_x) * std::fmin(CAMERA_RATE_X * dt, 1.0f);
    game->camera_y = game->camera_y + (target_y - game->camera_y) * std::fmin(CAMERA_RATE_Y * dt, 1.0f);
    game->camera_x = std::clamp(game->camera_x, 0.0f, CAMERA_MAX_X);
    game->camera_y = std::clamp(game->camera_y, 0.0f, CAMERA_MAX_Y);
}
