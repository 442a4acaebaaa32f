// Test support for drawing: an exact 640 x 360 software canvas whose pixels are
// read back, and a game record on a given screen in full daylight.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>

#include "core/game.h"
#include "render/view.h"
#include "save/save_file.h"
#include "save/save_path.h"

// Pixels are compared as 0xRRGGBB.
constexpr std::uint32_t rgb(std::uint32_t r, std::uint32_t g, std::uint32_t b) { return r << 16 | g << 8 | b; }

struct Px { int x, y; std::uint32_t rgb; };

struct Canvas {
    SDL_Surface* surface;
    SDL_Renderer* renderer;

    explicit Canvas(int w = VIEW_W, int h = VIEW_H)
        : surface(SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_ARGB8888)),
          renderer(SDL_CreateSoftwareRenderer(surface)) {
        SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    }
    // A whole frame of `g`, the pointer off the view.
    explicit Canvas(const Game& g) : Canvas() {
        const FrameInput in{0, 0, 0, 0, 0, 0, 0, 0, -100, -100};
        render_game(renderer, &g, &in, game_save_exists(game_default_save_path()));
    }
    ~Canvas() {
        SDL_DestroyRenderer(renderer);
        SDL_FreeSurface(surface);
    }

    std::uint32_t at(int x, int y) {
        SDL_RenderFlush(renderer);
        const auto* row = static_cast<const std::uint8_t*>(surface->pixels) + y * surface->pitch;
        return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFFu;
    }
    int count(int x, int y, int w, int h, std::uint32_t colour) {
        int n = 0;
        for (int j = y; j < y + h; ++j)
            for (int i = x; i < x + w; ++i) n += at(i, j) == colour ? 1 : 0;
        return n;
    }
    void expect(std::initializer_list<Px> want) {
        for (const Px& p : want) EXPECT_EQ(at(p.x, p.y), p.rgb) << "at (" << p.x << ", " << p.y << ")";
    }
};

// An empty world at t = 0.47 (full light, no darkness), the player out of sight.
inline std::unique_ptr<Game> game_on(std::uint32_t screen, std::uint32_t cursor = 0) {
    auto g = std::make_unique<Game>();  // about 95 KB, so on the heap
    g->screen = screen;
    g->menu_cursor = cursor;
    g->time_of_day = 0.47f;
    g->player.x = 5000.0f;
    return g;
}
