#include "sim/day_clock.h"

namespace {

constexpr float DAY_SECONDS = 240.0f;
constexpr float NIGHT_FROM = 0.55f;  // both bounds exclusive
constexpr float NIGHT_UNTIL = 0.92f;

}  // namespace

void day_clock_step(Game* game, float dt) {
    game->time_of_day = game->time_of_day + dt / DAY_SECONDS;
    if (game->time_of_day >= 1.0f) {
        game->time_of_day = game->time_of_day - 1.0f;
        game->day += 1;
    }
    game->tick += 1;
}

bool is_night(float time_of_day) { return NIGHT_FROM < time_of_day && time_of_day < NIGHT_UNTIL; }
