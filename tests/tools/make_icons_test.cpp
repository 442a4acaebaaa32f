// The application icons the build draws: every size is the hotbar's 16-pixel
// IRON PICK, each pixel grown to a square, on a transparent background.
#include <png.h>

#include <vector>

#include "core/tiles.h"
#include "render/icons.h"
#include "render/render_support.h"

namespace {

constexpr int ART = 16;

// 0xAARRGGBB per pixel, row by row; empty when the file cannot be read.
std::vector<std::uint32_t> read_png(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return {};
    image.format = PNG_FORMAT_BGRA;  // little-endian 0xAARRGGBB words
    std::vector<std::uint32_t> pixels(std::size_t{image.width} * image.height);
    // On failure libpng frees the image itself.
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) return {};
    return pixels;
}

TEST(MakeIcons, EverySizeIsTheHotbarPickScaledUp) {
    const Canvas canvas(ART, ART);
    SDL_SetRenderDrawColor(canvas.renderer, 0, 0, 0, 0);
    SDL_RenderClear(canvas.renderer);
    draw_item(canvas.renderer, ITEM_IRON_PICK, 0, 0, ART, 0);
    SDL_RenderFlush(canvas.renderer);
    const auto* art = static_cast<const std::uint32_t*>(canvas.surface->pixels);

    for (const std::size_t edge : {16, 32, 48, 64, 128, 256}) {
        const std::string size = std::to_string(edge);
        const auto icon = read_png(TALVEN_ICONS_DIR "/" + size + "x" + size + "/apps/" TALVEN_APP_ID ".png");
        std::vector<std::uint32_t> want;
        for (std::size_t y = 0; y < edge; ++y)
            for (std::size_t x = 0; x < edge; ++x) want.push_back(art[y * ART / edge * ART + x * ART / edge]);
        EXPECT_EQ(want, icon) << size;
    }
}

}  // namespace
