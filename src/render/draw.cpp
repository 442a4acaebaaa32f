// Placeholder until this subsystem lands; replaced by its real implementation.
#include "render/draw.h"
const Glyph FONT[FONT_GLYPHS] = {};
void fill(SDL_Renderer*, int, int, int, int, std::uint32_t) {}
void text(SDL_Renderer*, int, int, const char*, std::uint32_t, int) {}
