// Drawing speed on SDL's software renderer at 640 x 360: the debug world's play
// view, the inventory over it, and the title screen. Each benchmark also reports
// the SDL calls one frame makes, counted by standing in front of SDL's own entry
// points (the game's calls resolve to these first; they forward to SDL).
#include <SDL.h>
#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>

#include "core/frame_input.h"
#include "core/game.h"
#include "render/view.h"
#include "world/new_game.h"

namespace {

struct CallCounts {
    long fill_rects, outlines, lines, points, colours;
};
CallCounts calls;

template <typename Fn>
Fn real_sdl(const char* name) {
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int SDL_RenderFillRect(SDL_Renderer* r, const SDL_Rect* rect) {
    static const auto real = real_sdl<int (*)(SDL_Renderer*, const SDL_Rect*)>("SDL_RenderFillRect");
    ++calls.fill_rects;
    return real(r, rect);
}

int SDL_RenderDrawRect(SDL_Renderer* r, const SDL_Rect* rect) {
    static const auto real = real_sdl<int (*)(SDL_Renderer*, const SDL_Rect*)>("SDL_RenderDrawRect");
    ++calls.outlines;
    return real(r, rect);
}

int SDL_RenderDrawLine(SDL_Renderer* r, int x1, int y1, int x2, int y2) {
    static const auto real = real_sdl<int (*)(SDL_Renderer*, int, int, int, int)>("SDL_RenderDrawLine");
    ++calls.lines;
    return real(r, x1, y1, x2, y2);
}

int SDL_RenderDrawPoint(SDL_Renderer* r, int x, int y) {
    static const auto real = real_sdl<int (*)(SDL_Renderer*, int, int)>("SDL_RenderDrawPoint");
    ++calls.points;
    return real(r, x, y);
}

int SDL_SetRenderDrawColor(SDL_Renderer* r, Uint8 red, Uint8 green, Uint8 blue, Uint8 alpha) {
    static const auto real =
        real_sdl<int (*)(SDL_Renderer*, Uint8, Uint8, Uint8, Uint8)>("SDL_SetRenderDrawColor");
    ++calls.colours;
    return real(r, red, green, blue, alpha);
}

}  // extern "C"

namespace {

// The title asks whether a save exists every frame; keep that question away
// from the real data folder.
struct ScratchDataHome {
    std::filesystem::path dir;
    ScratchDataHome() {
        char tmpl[] = "/tmp/talven_bench_XXXXXX";
        dir = mkdtemp(tmpl);
        setenv("XDG_DATA_HOME", dir.c_str(), 1);
    }
    ~ScratchDataHome() {
        std::error_code ec;
        std::filesystem::remove_all(dir, ec);
    }
};

void use_scratch_data_home() { static const ScratchDataHome home; }

struct SoftwareFrame {
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, VIEW_W, VIEW_H, 32, SDL_PIXELFORMAT_ARGB8888);
    SDL_Renderer* renderer = SDL_CreateSoftwareRenderer(surface);
    ~SoftwareFrame() {
        SDL_DestroyRenderer(renderer);
        SDL_FreeSurface(surface);
    }
    // One frame as the main loop draws it, flushed so all drawing is inside.
    void draw(const Game& g, const FrameInput& in) {
        SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
        SDL_RenderClear(renderer);
        render_game(renderer, &g, &in, false);
        SDL_RenderFlush(renderer);
    }
};

void report_calls_of_one_frame(benchmark::State& state, SoftwareFrame& frame, const Game& g, const FrameInput& in) {
    calls = {};
    frame.draw(g, in);
    const CallCounts one = calls;
    state.counters["fill_rects"] = static_cast<double>(one.fill_rects);
    state.counters["outlines"] = static_cast<double>(one.outlines);
    state.counters["lines_points"] = static_cast<double>(one.lines + one.points);
    state.counters["draw_calls"] = static_cast<double>(one.fill_rects + one.outlines + one.lines + one.points);
    state.counters["colour_sets"] = static_cast<double>(one.colours);
}

void run_frames(benchmark::State& state, std::uint32_t screen) {
    use_scratch_data_home();
    auto g = std::make_unique<Game>();
    game_new(g.get(), 5010501u, "QA WORLD");
    g->screen = screen;
    FrameInput in{};
    in.mouse_x = 330;  // on the ground beside the player
    in.mouse_y = 200;
    SoftwareFrame frame;
    for (auto _ : state) frame.draw(*g, in);
    report_calls_of_one_frame(state, frame, *g, in);
}

void BM_PlayView(benchmark::State& state) { run_frames(state, SCREEN_PLAYING); }
void BM_InventoryOverPlayView(benchmark::State& state) { run_frames(state, SCREEN_INVENTORY); }
void BM_TitleScreen(benchmark::State& state) { run_frames(state, SCREEN_TITLE); }

}  // namespace

BENCHMARK(BM_PlayView)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InventoryOverPlayView)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TitleScreen)->Unit(benchmark::kMillisecond);
