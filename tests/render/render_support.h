// Test support for drawing and screens: an exact 640 x 360 software canvas whose
// pixels can be read back, and a scratch data folder so nothing touches the
// player's real save file.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "core/game.h"
#include "render/draw.h"
#include "save/save_file.h"

// 0xRRGGBB, the form pixels are compared in.
constexpr std::uint32_t rgb(std::uint32_t r, std::uint32_t g, std::uint32_t b) { return r << 16 | g << 8 | b; }

// The same colour as a packed draw colour (red in the low byte) as 0xRRGGBB.
constexpr std::uint32_t rgb_of(std::uint32_t packed) {
    return rgb(packed & 255, (packed >> 8) & 255, (packed >> 16) & 255);
}

struct Canvas {
    SDL_Surface* surface = nullptr;
    SDL_Renderer* renderer = nullptr;

    explicit Canvas(int w = VIEW_W, int h = VIEW_H) {
        surface = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_ARGB8888);
        renderer = SDL_CreateSoftwareRenderer(surface);
        SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
        clear(0, 0, 0);
    }
    ~Canvas() {
        SDL_DestroyRenderer(renderer);
        SDL_FreeSurface(surface);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void clear(Uint8 r, Uint8 g, Uint8 b) {
        SDL_SetRenderDrawColor(renderer, r, g, b, 255);
        SDL_RenderClear(renderer);
    }

    std::uint32_t at(int x, int y) {
        SDL_RenderFlush(renderer);
        const auto* row = static_cast<const std::uint8_t*>(surface->pixels) + y * surface->pitch;
        return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFFu;
    }

    // Pixels of one colour inside a rectangle.
    int count(int x, int y, int w, int h, std::uint32_t colour) {
        int n = 0;
        for (int j = y; j < y + h; ++j)
            for (int i = x; i < x + w; ++i) n += at(i, j) == colour ? 1 : 0;
        return n;
    }
};

// A zeroed record; value-initialised on the heap because it is about 95 KB.
inline std::unique_ptr<Game> blank_game() { return std::make_unique<Game>(); }

// One scratch folder per test process, used as XDG_DATA_HOME and as the working
// directory, removed when the process ends.
struct ScratchHome {
    std::filesystem::path dir;
    ScratchHome() {
        char tmpl[] = "/tmp/talven_test_XXXXXX";
        dir = mkdtemp(tmpl);
        setenv("XDG_DATA_HOME", dir.c_str(), 1);
        std::filesystem::current_path(dir);
    }
    ~ScratchHome() {
        std::error_code ec;
        std::filesystem::current_path("/tmp", ec);
        std::filesystem::remove_all(dir, ec);
    }
};

inline const std::filesystem::path& scratch_home() {
    static ScratchHome home;
    return home.dir;
}

// Saving and the inventory are built in parallel with the screens; tests that
// need the real thing skip while these report a stub.
inline bool saving_available() {
    auto g = blank_game();
    game_new(g.get(), 1, "PROBE");
    const auto path = scratch_home() / "probe.tvw";
    const bool ok = game_save(g.get(), path.c_str());
    std::filesystem::remove(path);
    return ok;
}
