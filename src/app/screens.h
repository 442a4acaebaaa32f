// The five screens (title, create-world form, play, inventory, pause): what each
// key, text, click and wheel event does, on_enter for menu items, the form's
// starting values, and the per-frame sample of held keys and pointer into FrameInput.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "core/frame_input.h"
#include "core/game.h"
#include "render/layout.h"  // inventory_slot_at: where a click lands in the grid

// Where the create-world form's seed starts, and the seed of the debug world.
constexpr std::uint32_t FORM_START_SEED = 5010501u;

// The seed and name the create-world form starts from (the default world name).
void form_start_values(Game* game);

// Window pixel to view pixel through the letterbox of a w x h window, truncated
// toward zero (saturated at the int range for absurd inputs).
void window_to_view(int w, int h, int px, int py, int* vx, int* vy);

void screens_handle_event(Game* game, SDL_Window* window, FrameInput* input, const SDL_Event* event);
void screens_sample_input(SDL_Window* window, FrameInput* input);

// Carries out the highlighted item of the current menu or form.
void on_enter(Game* game);
