#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "render/draw.h"
#include "render_support.h"

namespace {

SDL_BlendMode blend_mode(SDL_Renderer* r) {
    SDL_BlendMode mode = SDL_BLENDMODE_INVALID;
    SDL_GetRenderDrawBlendMode(r, &mode);
    return mode;
}

}  // namespace

// Opaque colours replace what is there without blending (the software renderer's
// fast path); alpha 0 leaves the pixel alone, and even alpha 1 still blends.
TEST(Draw, OpaqueReplacesAndOnlyAlphaZeroIsSkipped) {
    Canvas c(3, 1);
    fill(c.renderer, 0, 0, 3, 1, rgba(200, 100, 50));
    EXPECT_EQ(SDL_BLENDMODE_NONE, blend_mode(c.renderer));
    fill(c.renderer, 1, 0, 1, 1, rgba(0, 0, 0, 0));
    fill(c.renderer, 2, 0, 1, 1, rgba(0, 0, 0, 1));
    EXPECT_EQ(SDL_BLENDMODE_BLEND, blend_mode(c.renderer));

    std::array<std::uint32_t, 3> px{};
    SDL_RenderReadPixels(c.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, px.data(), sizeof px);
    const std::array<std::uint32_t, 3> want{0xFFC86432u, 0xFFC86432u, 0xFFC76331u};
    EXPECT_EQ(want, px);
}
