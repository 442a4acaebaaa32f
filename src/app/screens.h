// The five screens (title, create-world form, play, inventory, pause): what each
// key, text, click and wheel event does, on_enter for menu items, and the
// per-frame sample of held keys and pointer into FrameInput.
#pragma once

#include <SDL.h>

#include "core/frame_input.h"
#include "core/game.h"

// Window pixel to view pixel through the letterbox of a w x h window.
void window_to_view(int w, int h, int px, int py, int* vx, int* vy);
void screens_handle_event(Game* game, SDL_Window* window, FrameInput* input, const SDL_Event* event);
void screens_sample_input(Game* game, SDL_Window* window, FrameInput* input);
void on_enter(Game* game);
