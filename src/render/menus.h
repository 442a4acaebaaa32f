// The title screen, the create-world form, and the inventory/crafting and pause
// overlays drawn over the play view. Owns the menus' labels and colours.
#pragma once

#include <SDL.h>

#include <span>

#include "core/game.h"

// LOAD WORLD is lit only when `save_exists`.
void render_title(SDL_Renderer* renderer, const Game* game, bool save_exists);
void render_create_form(SDL_Renderer* renderer, const Game* game);
void render_inventory_overlay(SDL_Renderer* renderer, const Game* game);
void render_pause_overlay(SDL_Renderer* renderer, const Game* game);

// The boxes an overlay on `screen` paints opaquely (none for other screens):
// whatever is drawn under them earlier in the frame ends up hidden.
std::span<const SDL_Rect> overlay_boxes(std::uint32_t screen);
