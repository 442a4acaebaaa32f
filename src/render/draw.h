// Drawing primitives: filled and outlined rectangles in a packed colour (red in
// the low byte) and text in the game's own 5 x 7 bitmap font, one filled
// rectangle per lit run of a glyph row. Owns the font table; every other picture
// is built from these.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <span>

struct Glyph {
    char ch;
    const char* rows[7];  // "#" lit, "." unlit, 5 columns each
};

constexpr int FONT_GLYPHS = 45;
extern const Glyph FONT[FONT_GLYPHS];

constexpr int GLYPH_ADVANCE = 6;  // 5 lit columns and one of spacing

// Packed colour from its channels: red in bits 0-7, up to alpha in bits 24-31.
constexpr std::uint32_t rgba(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a = 255) {
    return static_cast<std::uint32_t>(r) | static_cast<std::uint32_t>(g) << 8 |
           static_cast<std::uint32_t>(b) << 16 | static_cast<std::uint32_t>(a) << 24;
}

// Also picks the blend mode: translucent colours blend over what is drawn, opaque
// ones replace it. Every drawing call sets its colour, so no mode leaks between them.
void set_colour(SDL_Renderer* renderer, std::uint32_t colour);

// Rectangles of width or height 0 or less draw nothing (SDL would draw a line).
void fill(SDL_Renderer* renderer, int x, int y, int w, int h, std::uint32_t colour);
// Fills `area` except under `holes`, which the caller then paints over opaquely:
// the same picture as one fill, without blending pixels that end up hidden.
// Holes may overlap or stick out of the area; more than FILL_AROUND_MAX_HOLES
// fill the whole area.
constexpr std::size_t FILL_AROUND_MAX_HOLES = 64;
void fill_around(SDL_Renderer* renderer, SDL_Rect area, std::span<const SDL_Rect> holes, std::uint32_t colour);
void outline(SDL_Renderer* renderer, int x, int y, int w, int h, std::uint32_t colour);

// A slot or menu item: its inside, then its edge (none when the edge's alpha is
// 0). The inside is filled in columns a few pixels wide, which gives the same
// pixels as one rectangle but keeps SDL's software renderer from streaming it
// past the cache just before its edge, icon and label are drawn on it (0.3 ms
// of the inventory overlay's cost there).
void box(SDL_Renderer* renderer, SDL_Rect at, std::uint32_t inside, std::uint32_t edge);

// Leaves the draw colour set to `colour`. Lower case draws as upper case; bytes
// the font lacks draw as a blank cell and still advance the pen.
void text(SDL_Renderer* renderer, int x, int y, const char* str, std::uint32_t colour, int scale);

// Start x that centres `str` on the view's middle column 320.
int centred_text_x(const char* str, int scale);
// Start x of a scale-1 string whose last cell ends on column `right_edge`.
int right_aligned_text_x(int right_edge, const char* str);

// A slot's stack size, right-aligned on `right_edge`; a single item shows no number.
void stack_count(SDL_Renderer* renderer, int right_edge, int y, int count, std::uint32_t colour);
