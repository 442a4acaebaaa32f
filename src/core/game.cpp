#include "core/game.h"

#include <cstdio>

void game_notice(Game* game, const char* text) {
    std::snprintf(game->notice, sizeof game->notice, "%s", text);
    game->notice_timer = NOTICE_SECONDS;
}
