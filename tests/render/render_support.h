// Test support for drawing: an exact 640 x 360 software canvas whose pixels are
// read back, a digest of a whole picture, and the picture kept as a file when
// its digest is not the one expected.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "core/game.h"
#include "render/view.h"

// FNV-1a 32 over each pixel's red, green and blue bytes, rows from the top.
inline std::uint32_t picture_digest(SDL_Surface* picture) {
    SDL_Surface* s = SDL_ConvertSurfaceFormat(picture, SDL_PIXELFORMAT_ARGB8888, 0);
    std::uint32_t h = 0x811C9DC5u;
    for (int y = 0; y < s->h; ++y)
        for (int x = 0; x < s->w; ++x) {
            const std::uint32_t px = static_cast<const std::uint32_t*>(s->pixels)[y * (s->pitch / 4) + x];
            for (const int shift : {16, 8, 0}) h = (h ^ ((px >> shift) & 0xFFu)) * 0x01000193u;
        }
    SDL_FreeSurface(s);
    return h;
}

// Compares a picture's digest; a different picture is written to `name`.bmp in
// the working folder (the build folder under ctest) and named in the failure.
inline void expect_picture(std::uint32_t want, SDL_Surface* picture, const std::string& name) {
    const std::uint32_t got = picture_digest(picture);
    if (got == want) return;
    const std::string file = std::filesystem::absolute(name + ".bmp").string();
    SDL_SaveBMP(picture, file.c_str());
    char hex[32];
    std::snprintf(hex, sizeof hex, "0x%08X, got 0x%08X", want, got);
    ADD_FAILURE() << name << ": digest expected " << hex << "; the picture is " << file;
}

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
        render_game(renderer, &g, &in, false);
    }
    ~Canvas() {
        SDL_DestroyRenderer(renderer);
        SDL_FreeSurface(surface);
    }
};
