// The frame's drawing: dispatch by screen, and the play view (sky, sun or moon,
// hills, tiles, drops, creatures, player, darkness, torch glow, pointer, HUD).
// Reads the game and the pointer; never changes the game.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "core/frame_input.h"
#include "core/game.h"

void render_game(SDL_Renderer* renderer, const Game* game, const FrameInput* input);

// The notice, centred at y while its timer runs. The play view and the title
// show it in colours of their own.
void draw_notice(SDL_Renderer* renderer, const Game* game, int y, std::uint32_t colour);
