// Writes the renderer's current 640 x 360 output to a 32-bit BMP file; any other
// output size is refused with an SDL error text.
#pragma once

#include <SDL.h>

int render_screenshot(SDL_Renderer* renderer, const char* path);
