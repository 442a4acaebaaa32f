#include "render/notice.h"

#include <cstdio>

#include "render/draw.h"

// The field may lack its terminator, so at most its own size is read.
void draw_notice(SDL_Renderer* renderer, const Game* game, int y, std::uint32_t colour) {
    if (!(game->notice_timer > 0.0f)) return;
    char line[NOTICE_SIZE + 1];
    std::snprintf(line, sizeof line, "%.*s", NOTICE_SIZE, game->notice);
    text(renderer, centred_text_x(line, 1), y, line, colour, 1);
}
