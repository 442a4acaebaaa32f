// Drawing primitives: filled rectangles in a packed colour (red in the low byte)
// and text in the game's own 5 x 7 bitmap font, one square per lit pixel.
#pragma once

#include <SDL.h>

#include <cstdint>

struct Glyph {
    char ch;
    const char* rows[7];  // "#" lit, "." unlit, 5 columns each
};

constexpr int FONT_GLYPHS = 45;
extern const Glyph FONT[FONT_GLYPHS];

void fill(SDL_Renderer* renderer, int x, int y, int w, int h, std::uint32_t colour);
void text(SDL_Renderer* renderer, int x, int y, const char* str, std::uint32_t colour, int scale);
