// The title screen, the create-world form, and the inventory/crafting and pause
// overlays drawn over the play view. Owns the menus' labels and colours.
#pragma once

#include <SDL.h>

#include "core/game.h"

// LOAD WORLD is lit only when `save_exists`.
void render_title(SDL_Renderer* renderer, const Game* game, bool save_exists);
void render_create_form(SDL_Renderer* renderer, const Game* game);
void render_inventory_overlay(SDL_Renderer* renderer, const Game* game);
void render_pause_overlay(SDL_Renderer* renderer, const Game* game);
