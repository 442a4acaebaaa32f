#include "render/canvas.h"

#include "core/game.h"

namespace {

void clear_black(SDL_Renderer* r) {
    SDL_SetRenderDrawColor(r, 0, 0, 0, 255);
    SDL_RenderClear(r);
}

// Whole copies without blending or smoothing keep every view pixel a solid
// block of window pixels, exactly the colour it was drawn in.
SDL_Texture* make_texture(SDL_Renderer* r, Uint32 format) {
    if (!SDL_RenderTargetSupported(r)) return nullptr;
    SDL_Texture* t = SDL_CreateTexture(r, format, SDL_TEXTUREACCESS_TARGET, VIEW_W, VIEW_H);
    if (t == nullptr) return nullptr;
    SDL_SetTextureBlendMode(t, SDL_BLENDMODE_NONE);
    SDL_SetTextureScaleMode(t, SDL_ScaleModeNearest);
    return t;
}

}  // namespace

ViewCanvas canvas_create(SDL_Renderer* renderer, Uint32 format) {
    return {renderer, format, make_texture(renderer, format)};
}

void canvas_destroy(ViewCanvas* canvas) {
    SDL_DestroyTexture(canvas->texture);  // refuses a null texture and nothing else happens
    canvas->texture = nullptr;
}

void canvas_handle_event(ViewCanvas* canvas, const SDL_Event* event) {
    if (event->type != SDL_RENDER_TARGETS_RESET && event->type != SDL_RENDER_DEVICE_RESET) return;
    canvas_destroy(canvas);
    canvas->texture = make_texture(canvas->renderer, canvas->format);
}

void canvas_begin_frame(ViewCanvas* canvas) {
    // A canvas the renderer no longer takes is given up for the straight path.
    if (canvas->texture != nullptr && SDL_SetRenderTarget(canvas->renderer, canvas->texture) != 0)
        canvas_destroy(canvas);
    clear_black(canvas->renderer);
}

void canvas_end_frame(ViewCanvas* canvas) {
    if (canvas->texture == nullptr) return;
    SDL_SetRenderTarget(canvas->renderer, nullptr);
    clear_black(canvas->renderer);
    SDL_RenderCopy(canvas->renderer, canvas->texture, nullptr, nullptr);
}
