#include "sim/autosave.h"

namespace {

constexpr float AUTOSAVE_SECONDS = 45.0f;

}  // namespace

void autosave_count(Game* game, float dt) { game->autosave_timer = game->autosave_timer + dt; }

bool autosave_due(const Game* game) {
    return !game->autosave_off && game->autosave_timer >= AUTOSAVE_SECONDS;
}

void autosave_finish(Game* game, bool saved) {
    game->autosave_timer = 0.0f;
    game_notice(game, saved ? "WORLD SAVED" : "SAVE FAILED - WORLD STILL OPEN");
}
