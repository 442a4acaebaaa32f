#include "app/screenshot.h"

namespace {

constexpr int SHOT_W = 640;
constexpr int SHOT_H = 360;

}  // namespace

// The size is checked in real output pixels so every screenshot can be compared
// pixel for pixel with any other; a scaled window is refused, not resampled.
int render_screenshot(SDL_Renderer* renderer, const char* path) {
    int w = 0;
    int h = 0;
    if (SDL_GetRendererOutputSize(renderer, &w, &h) != 0 || w != SHOT_W || h != SHOT_H) {
        SDL_SetError("screenshot output must be exactly %dx%d (got %dx%d)", SHOT_W, SHOT_H, w, h);
        return 0;
    }
    SDL_Surface* shot = SDL_CreateRGBSurfaceWithFormat(0, SHOT_W, SHOT_H, 32, SDL_PIXELFORMAT_ARGB8888);
    if (shot == nullptr) return 0;
    if (SDL_RenderReadPixels(renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, shot->pixels, shot->pitch) != 0) {
        SDL_FreeSurface(shot);
        return 0;
    }
    const int result = SDL_SaveBMP_RW(shot, SDL_RWFromFile(path, "wb"), 1) == 0 ? 1 : 0;
    SDL_FreeSurface(shot);
    return result;
}
