// The five screens (title, create-world form, play, inventory, pause): what each
// key, text, click and wheel event does, on_enter for menu items, and the
// per-frame sample of held keys and pointer into FrameInput.
#pragma once

#include <SDL.h>

#include "core/frame_input.h"
#include "core/game.h"

// Window pixel to view pixel through the letterbox of a w x h window, truncated
// toward zero (saturated at the int range for absurd inputs).
void window_to_view(int w, int h, int px, int py, int* vx, int* vy);

// The inventory slot (0..39) whose cell holds view point (vx, vy), or -1. The
// 34 x 40 cells tile the grid without gaps, so a click between two drawn slots
// still lands on one.
int inventory_slot_at(int vx, int vy);

void screens_handle_event(Game* game, SDL_Window* window, FrameInput* input, const SDL_Event* event);
void screens_sample_input(Game* game, SDL_Window* window, FrameInput* input);

// Carries out the highlighted item of the current menu or form.
void on_enter(Game* game);
