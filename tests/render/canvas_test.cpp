// The view-sized canvas against drawing straight to the window, in hidden windows
// on the dummy driver: the same bytes at whole scales, also after the renderer
// loses its targets.
#include "render/canvas.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "core/game.h"
#include "render/view.h"
#include "world/new_game.h"

namespace {

struct Window {
    SDL_Window* window;
    SDL_Renderer* renderer;
    // An 8-bit palette format no renderer takes as a target: the straight path.
    ViewCanvas canvas, straight;

    Window(int w, int h) {
        SDL_Init(SDL_INIT_VIDEO);
        window = SDL_CreateWindow("TALVEN", 0, 0, w, h, SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE);
        renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
        SDL_RenderSetLogicalSize(renderer, VIEW_W, VIEW_H);
        SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
        canvas = canvas_create(renderer, SDL_GetWindowPixelFormat(window));
        straight = canvas_create(renderer, SDL_PIXELFORMAT_INDEX8);
    }
    ~Window() {
        canvas_destroy(&canvas);
        SDL_DestroyRenderer(renderer);
        SDL_DestroyWindow(window);
        SDL_Quit();
    }
    // One frame of the debug world at night (translucent fills) with all five
    // cracks (lines) under the pointer, as the main loop draws it, over a window
    // left white so that unpainted bars show, read back from the whole window.
    // The inventory sits over the world's bottom right corner, where the last
    // tiles drawn are the grid's last.
    std::vector<Uint8> frame(ViewCanvas* c, std::uint32_t screen) {
        auto g = std::make_unique<Game>();
        game_new(g.get(), 5010501u, "QA WORLD");
        g->screen = screen;
        g->time_of_day = 0.8f;
        g->player.mine_progress = 100.0f;
        if (screen == SCREEN_INVENTORY) g->camera_x = WORLD_W * TILE_SIZE - VIEW_W, g->camera_y = WORLD_H * TILE_SIZE - VIEW_H;
        const FrameInput in{0, 0, 0, 0, 0, 0, 0, 0, 200, 250};
        SDL_SetRenderDrawColor(renderer, 255, 255, 255, 255);
        SDL_RenderClear(renderer);
        canvas_begin_frame(c);
        render_game(renderer, g.get(), &in, false);
        canvas_end_frame(c);
        SDL_RenderFlush(renderer);
        const SDL_Surface* s = SDL_GetWindowSurface(window);
        const auto* px = static_cast<const Uint8*>(s->pixels);
        return {px, px + s->pitch * s->h};
    }
};

// Scale 1, scale 2 with black bars above and below, and scale 3. Only the two
// reset events replace the texture; a refused canvas stays refused.
TEST(Canvas, DrawsTheSameBytesAsStraightToTheWindow) {
    const int sizes[][2] = {{640, 360}, {1280, 800}, {1920, 1080}};
    static int marker;
    for (const auto& [w, h] : sizes) {
        SCOPED_TRACE(w);
        Window win(w, h);
        ASSERT_NE(win.canvas.texture, nullptr) << SDL_GetError();
        EXPECT_EQ(win.straight.texture, nullptr);
        for (const std::uint32_t screen : {SCREEN_PLAYING, SCREEN_INVENTORY, SCREEN_TITLE}) {
            const std::vector<Uint8> got = win.frame(&win.canvas, screen);
            EXPECT_EQ(win.frame(&win.straight, screen), got) << screen;
            const auto bar = static_cast<std::ptrdiff_t>(w * 4 * (h - w * 9 / 16) / 2);
            EXPECT_EQ(std::vector<Uint8>(bar), std::vector(got.begin(), got.begin() + bar));
        }
        for (const SDL_EventType type : {SDL_RENDER_TARGETS_RESET, SDL_RENDER_DEVICE_RESET, SDL_WINDOWEVENT}) {
            SDL_SetTextureUserData(win.canvas.texture, &marker);
            SDL_Event e{.type = type};
            canvas_handle_event(&win.canvas, &e);
            canvas_handle_event(&win.straight, &e);
            ASSERT_NE(win.canvas.texture, nullptr);
            EXPECT_EQ(type == SDL_WINDOWEVENT, SDL_GetTextureUserData(win.canvas.texture) == &marker) << type;
            EXPECT_EQ(win.straight.texture, nullptr);
            EXPECT_EQ(win.frame(&win.straight, SCREEN_PLAYING), win.frame(&win.canvas, SCREEN_PLAYING)) << type;
        }
        EXPECT_NE(win.canvas.texture, nullptr);  // still drawing through it
    }
}

}  // namespace
