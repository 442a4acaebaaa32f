// The frame's drawing: dispatch by screen, and the play view (sky, sun or moon,
// hills, tiles, drops, creatures, player, darkness, torch glow, pointer, HUD).
// Reads the game and the pointer; never changes the game, never touches a file.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "core/frame_input.h"
#include "core/game.h"

// `save_exists` tells the title whether there is a world to load.
void render_game(SDL_Renderer* renderer, const Game* game, const FrameInput* input, bool save_exists);
