// Placeholder until this subsystem lands; replaced by its real implementation.
#include "render/menus.h"
void render_title(SDL_Renderer*, const Game*) {}
void render_create_form(SDL_Renderer*, const Game*) {}
void render_inventory_overlay(SDL_Renderer*, const Game*) {}
void render_pause_overlay(SDL_Renderer*, const Game*) {}
