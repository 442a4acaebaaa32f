// The notice line: the record's notice text, centred, while its timer runs. The
// play view and the title both show it, each in a colour of its own.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "core/game.h"

void draw_notice(SDL_Renderer* renderer, const Game* game, int y, std::uint32_t colour);
