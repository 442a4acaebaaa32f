// The frame's canvas: one 640 x 360 target texture that every frame is drawn into
// at view size and then copied, scaled, onto the window, so drawing costs the same
// at any window size. Owns that texture; without it frames go straight to the window.
#pragma once

#include <SDL.h>

struct ViewCanvas {
    SDL_Renderer* renderer;
    Uint32 format;         // the window's pixel format, so the copy is a plain scaled blit
    SDL_Texture* texture;  // null: draw straight to the window (slower, same picture)
};

// A canvas for `renderer` in `format`. When the renderer cannot draw into textures
// or the texture cannot be made, the canvas has no texture and frames are drawn
// straight to the window.
ViewCanvas canvas_create(SDL_Renderer* renderer, Uint32 format);
void canvas_destroy(ViewCanvas* canvas);

// A lost device or lost target contents: the texture is made again.
void canvas_handle_event(ViewCanvas* canvas, const SDL_Event* event);

// Starts a frame: the canvas (or the window) is the target, cleared black.
void canvas_begin_frame(ViewCanvas* canvas);
// Ends a frame: the window is the target again, cleared black, with the canvas
// copied over the view's area. The frame is ready to read back and present.
void canvas_end_frame(ViewCanvas* canvas);
