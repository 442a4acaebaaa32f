// The title screen, the create-world form, and the inventory/crafting and pause
// overlays drawn over the play view.
#pragma once

#include <SDL.h>

#include "core/game.h"

void render_title(SDL_Renderer* renderer, const Game* game);
void render_create_form(SDL_Renderer* renderer, const Game* game);
void render_inventory_overlay(SDL_Renderer* renderer, const Game* game);
void render_pause_overlay(SDL_Renderer* renderer, const Game* game);
