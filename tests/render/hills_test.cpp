// Hills drawn in bands, over a sky cut off where the hills always cover it, leave
// the picture of full-height steps over a whole sky wherever the camera stands.
#include <memory>

#include "render/draw.h"
#include "render/render_support.h"

namespace {

struct Step {
    int dx, top, width;
};
struct Layer {
    float parallax;
    int period, first_base, count;
    std::uint32_t colour;
    Step steps[7];
};
constexpr Layer FULL_HEIGHT[] = {
    {0.08f, 120, -90, 8, rgba(44, 82, 104),
     {{-30, 190, 120}, {-20, 181, 100}, {-10, 172, 80}, {0, 163, 60}, {10, 154, 40}, {20, 145, 20}, {30, 136, 0}}},
    {0.16f, 92, -52, 10, rgba(47, 91, 80),
     {{-40, 230, 92}, {-32, 222, 76}, {-24, 214, 60}, {-16, 206, 44}, {-8, 198, 28}, {0, 190, 12}, {0, 0, 0}}},
};

// Rows 100..310 hold the hills and the sky between them, clear of the sun at full
// light and of the HUD.
TEST(Hills, BandsMatchFullHeightStepsAtEveryCamera) {
    for (int k = 0; k < 48; ++k) {
        const float camera_x = -3000.0f + 131.3f * static_cast<float>(k);
        // An empty world in full daylight, the player out of sight.
        auto g = std::make_unique<Game>();
        g->screen = SCREEN_PLAYING;
        g->time_of_day = 0.47f;
        g->player.x = 5000.0f;
        g->camera_x = camera_x;
        g->player.y = -1000.0f;
        Canvas got(*g), want;
        fill(want.renderer, 0, 0, VIEW_W, VIEW_H, rgba(109, 168, 217));
        for (const Layer& layer : FULL_HEIGHT) {
            const int o = static_cast<int>(camera_x * layer.parallax);
            for (int j = 0; j < layer.count; ++j)
                for (const Step& s : layer.steps)
                    fill(want.renderer, layer.first_base - o % layer.period + layer.period * j + s.dx, s.top, s.width,
                         VIEW_H, layer.colour);
        }
        SDL_RenderFlush(got.renderer);
        SDL_RenderFlush(want.renderer);
        const auto pixel = [](const Canvas& c, int x, int y) {
            return static_cast<const std::uint32_t*>(c.surface->pixels)[y * (c.surface->pitch / 4) + x] & 0xFFFFFFu;
        };
        int wrong = 0;
        for (int y = 100; y <= 310; ++y)
            for (int x = 0; x < VIEW_W; ++x) wrong += pixel(got, x, y) != pixel(want, x, y);
        EXPECT_EQ(0, wrong) << camera_x;
    }
}

}  // namespace
