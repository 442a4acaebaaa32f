// Item pictures drawn from rectangles at any size: one per tile/block item, the
// torch, the picks and the swords; ore specks placed by a variation hash.
#pragma once

#include <SDL.h>

#include <cstdint>

void draw_item(SDL_Renderer* renderer, std::int32_t id, int x, int y, std::uint32_t size,
               std::uint32_t variation);
