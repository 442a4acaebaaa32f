// Hills drawn in bands, over a sky cut off where the hills always cover it, at
// 48 camera positions on both sides of the world's left edge: one digest of rows
// 100..310 (the hills and the sky between them, clear of the sun at full light
// and of the HUD). It was checked once against full-height steps drawn over a
// whole sky, pixel for pixel; the "play-by-day" picture shows the same hills.
#include <memory>

#include "core/game_digest.h"
#include "render/render_support.h"

TEST(Hills, BandsMatchFullHeightStepsAtEveryCamera) {
    std::uint32_t digest = FNV1A_OFFSET;
    for (int k = 0; k < 48; ++k) {
        // An empty world in full daylight, the player out of sight.
        auto g = std::make_unique<Game>();
        g->screen = SCREEN_PLAYING;
        g->time_of_day = 0.47f;
        g->player.x = 5000.0f;
        g->player.y = -1000.0f;
        g->camera_x = -3000.0f + 131.3f * static_cast<float>(k);
        const Canvas got(*g);
        SDL_RenderFlush(got.renderer);
        const auto* pixels = static_cast<const std::uint8_t*>(got.surface->pixels);
        for (int y = 100; y <= 310; ++y) digest = fnv1a(pixels + y * got.surface->pitch, VIEW_W * 4, digest);
    }
    EXPECT_EQ(0x1253910Du, digest);
}
