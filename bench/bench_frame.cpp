// Cost of a whole frame as the program draws it, in a hidden window of each common
// size on SDL's software renderer: draw into the view-sized canvas, copy it onto
// the window, present. The growth of the play
// view with the window's pixels shows at a glance; the overlays and the title are
// measured at the same sizes.
#include <SDL.h>
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <memory>

#include "core/frame_input.h"
#include "core/game.h"
#include "render/canvas.h"
#include "render/view.h"
#include "world/new_game.h"

namespace {

struct WindowFrame {
    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
    ViewCanvas canvas{};

    WindowFrame(int w, int h) {
        setenv("SDL_VIDEODRIVER", "dummy", 0);
        SDL_Init(SDL_INIT_VIDEO);
        window = SDL_CreateWindow("TALVEN", 0, 0, w, h, SDL_WINDOW_HIDDEN);
        renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
        SDL_RenderSetLogicalSize(renderer, VIEW_W, VIEW_H);
        SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
        canvas = canvas_create(renderer, SDL_GetWindowPixelFormat(window));
    }
    ~WindowFrame() {
        canvas_destroy(&canvas);
        SDL_DestroyRenderer(renderer);
        SDL_DestroyWindow(window);
    }
    void draw(const Game& g, const FrameInput& in) {
        canvas_begin_frame(&canvas);
        render_game(renderer, &g, &in, false);
        canvas_end_frame(&canvas);
        SDL_RenderPresent(renderer);
    }
};

void window_frames(benchmark::State& state, std::uint32_t screen) {
    char home[] = "/tmp/talven_bench_frame_XXXXXX";  // the title looks for a save
    setenv("XDG_DATA_HOME", mkdtemp(home), 1);
    auto g = std::make_unique<Game>();
    game_new(g.get(), 5010501u, "QA WORLD");
    g->screen = screen;
    FrameInput in{};
    in.mouse_x = 330;
    in.mouse_y = 200;
    WindowFrame frame(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) frame.draw(*g, in);
    rmdir(home);
}

void window_sizes(benchmark::internal::Benchmark* b) {
    b->Args({640, 360})->Args({1280, 720})->Args({1920, 1080})->Args({2560, 1440})->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK_CAPTURE(window_frames, play, SCREEN_PLAYING)->Apply(window_sizes);
BENCHMARK_CAPTURE(window_frames, inventory, SCREEN_INVENTORY)->Apply(window_sizes);
BENCHMARK_CAPTURE(window_frames, pause, SCREEN_PAUSE)->Apply(window_sizes);
BENCHMARK_CAPTURE(window_frames, title, SCREEN_TITLE)->Args({1280, 720})->Unit(benchmark::kMillisecond);
