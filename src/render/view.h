// The frame's drawing: dispatch by screen, and the play view (sky, sun or moon,
// hills, tiles, drops, creatures, player, darkness, torch glow, pointer, HUD).
// Reads the game and the pointer; never changes the game.
#pragma once

#include <SDL.h>

#include "core/frame_input.h"
#include "core/game.h"

void render_game(SDL_Renderer* renderer, const Game* game, const FrameInput* input);
