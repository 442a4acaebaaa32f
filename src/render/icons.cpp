// Placeholder until this subsystem lands; replaced by its real implementation.
#include "render/icons.h"
void draw_item(SDL_Renderer*, std::int32_t, int, int, std::uint32_t, std::uint32_t) {}
