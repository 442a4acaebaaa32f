// Build-time tool: draws the application icon, the game's own IRON PICK picture,
// through SDL's software renderer and writes it as PNG files for the desktop's
// icon theme.
// Usage: talven_make_icons OUT_DIR NAME SIZE... writes OUT_DIR/SIZExSIZE/apps/NAME.png
#include <SDL.h>
#include <png.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/tiles.h"
#include "render/icons.h"

namespace {

// The hotbar draws items 16 pixels wide; larger icons scale that picture up
// whole, the way the window scales the game, so every size shows the same pixels.
constexpr int ART_SIZE = 16;

bool write_icon(int size, const std::filesystem::path& file) {
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, size, size, 32, SDL_PIXELFORMAT_ARGB8888);
    SDL_Renderer* renderer = surface != nullptr ? SDL_CreateSoftwareRenderer(surface) : nullptr;
    bool ok = renderer != nullptr;
    if (ok) {
        const float scale = static_cast<float>(size) / static_cast<float>(ART_SIZE);
        SDL_SetRenderDrawColor(renderer, 0, 0, 0, 0);
        SDL_RenderClear(renderer);
        SDL_RenderSetScale(renderer, scale, scale);
        draw_item(renderer, ITEM_IRON_PICK, 0, 0, ART_SIZE, 0);
        SDL_RenderPresent(renderer);

        // ARGB8888 lies in memory as B, G, R, A on a little-endian machine.
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        image.width = static_cast<png_uint_32>(size);
        image.height = static_cast<png_uint_32>(size);
        image.format = SDL_BYTEORDER == SDL_LIL_ENDIAN ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
        ok = png_image_write_to_file(&image, file.c_str(), 0, surface->pixels, surface->pitch, nullptr) != 0;
        if (!ok) std::fprintf(stderr, "talven_make_icons: %s: %s\n", file.c_str(), image.message);
    } else {
        std::fprintf(stderr, "talven_make_icons: %s\n", SDL_GetError());
    }
    if (renderer != nullptr) SDL_DestroyRenderer(renderer);
    SDL_FreeSurface(surface);
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: talven_make_icons OUT_DIR NAME SIZE...\n");
        return 2;
    }
    for (int i = 3; i < argc; ++i) {
        const int size = std::atoi(argv[i]);
        if (size < 1 || size % ART_SIZE != 0) {
            std::fprintf(stderr, "talven_make_icons: size %s is not a multiple of %d\n", argv[i], ART_SIZE);
            return 2;
        }
        const std::string edge = std::to_string(size);
        const std::filesystem::path dir = std::filesystem::path(argv[1]) / (edge + "x" + edge) / "apps";
        std::error_code error;
        std::filesystem::create_directories(dir, error);
        if (error || !write_icon(size, dir / (std::string(argv[2]) + ".png"))) return 1;
    }
    return 0;
}
