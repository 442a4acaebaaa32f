// Test support for drawing and screens: an exact 640 x 360 software canvas whose
// pixels are read back, and a scratch data folder so nothing touches the
// player's real save file.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <memory>

#include "core/game.h"
#include "render/draw.h"
#include "save/save_file.h"

// Pixels are compared as 0xRRGGBB.
constexpr std::uint32_t rgb(std::uint32_t r, std::uint32_t g, std::uint32_t b) { return r << 16 | g << 8 | b; }

struct Px {
    int x, y;
    std::uint32_t rgb;
};

struct Canvas {
    SDL_Surface* surface;
    SDL_Renderer* renderer;

    explicit Canvas(int w = VIEW_W, int h = VIEW_H)
        : surface(SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_ARGB8888)),
          renderer(SDL_CreateSoftwareRenderer(surface)) {
        SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    }
    ~Canvas() {
        SDL_DestroyRenderer(renderer);
        SDL_FreeSurface(surface);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

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

// Value-initialised (all zero) on the heap: the record is about 95 KB.
inline std::unique_ptr<Game> blank_game() { return std::make_unique<Game>(); }

// One scratch folder per process, as XDG_DATA_HOME and working directory.
inline const std::filesystem::path& scratch_home() {
    struct Home {
        std::filesystem::path dir;
        Home() {
            char tmpl[] = "/tmp/talven_test_XXXXXX";
            dir = mkdtemp(tmpl);
            setenv("XDG_DATA_HOME", dir.c_str(), 1);
            std::filesystem::current_path(dir);
        }
        ~Home() {
            std::error_code ec;
            std::filesystem::current_path("/tmp", ec);
            std::filesystem::remove_all(dir, ec);
        }
    };
    static const Home home;
    return home.dir;
}

