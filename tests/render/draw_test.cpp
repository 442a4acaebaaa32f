
#include <array>
#include <vector>

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
// fast path); alpha 0 leaves the pixel alone, and even alpha 1 still blends. A
// one-pixel outline is that pixel.
TEST(Draw, OpaqueReplacesAndOnlyAlphaZeroIsSkipped) {
    Canvas c(3, 1);
    fill(c.renderer, 0, 0, 3, 1, rgba(200, 100, 50));
    EXPECT_EQ(SDL_BLENDMODE_NONE, blend_mode(c.renderer));
    fill(c.renderer, 1, 0, 1, 1, rgba(0, 0, 0, 0));
    fill(c.renderer, 2, 0, 1, 1, rgba(0, 0, 0, 1));
    EXPECT_EQ(SDL_BLENDMODE_BLEND, blend_mode(c.renderer));
    outline(c.renderer, 0, 0, 1, 1, rgba(10, 20, 30));

    std::array<std::uint32_t, 3> px{};
    SDL_RenderReadPixels(c.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, px.data(), sizeof px);
    const std::array<std::uint32_t, 3> want{0xFF0A141Eu, 0xFFC86432u, 0xFFC76331u};
    EXPECT_EQ(want, px);
}

// Around holes that overlap, stick out of the area or have no size, exactly the
// pixels outside every hole blend, even at alpha 1; with too many holes the
// whole area does.
TEST(Draw, FillAroundBlendsEverythingButTheHoles) {
    std::uint32_t seed = 12345u;
    const auto next = [&seed](int n) { return static_cast<int>((seed = seed * 1664525u + 1013904223u) >> 16) % n; };
    for (int round = 0; round < 40; ++round) {
        std::vector<SDL_Rect> holes(static_cast<std::size_t>(round < 39 ? next(9) : FILL_AROUND_MAX_HOLES + 1));
        for (SDL_Rect& h : holes) h = {next(40) - 6, next(30) - 6, next(16), next(16)};
        const SDL_Rect area{next(8), next(6), next(26), next(22)};
        const std::uint32_t ground = rgba(30, 160, 90), veil = rgba(200, 40, 10, round % 4 == 0 ? 1 : 120);
        Canvas want(32, 26), got(32, 26);
        for (Canvas* c : {&want, &got}) fill(c->renderer, 0, 0, 32, 26, ground);
        fill(want.renderer, area.x, area.y, area.w, area.h, veil);
        if (holes.size() <= FILL_AROUND_MAX_HOLES)
            for (const SDL_Rect& h : holes) fill(want.renderer, h.x, h.y, h.w, h.h, ground);
        fill_around(got.renderer, area, holes, veil);
        std::vector<std::uint32_t> a(32 * 26), b(32 * 26);
        SDL_RenderReadPixels(want.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, a.data(), 32 * 4);
        SDL_RenderReadPixels(got.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, b.data(), 32 * 4);
        EXPECT_EQ(a, b) << "round " << round << " with " << holes.size() << " holes";
    }
}

// Typed names may hold small letters: they are drawn as capitals, a to z.
TEST(Draw, SmallLettersAreDrawnAsCapitals) {
    Canvas small(24, 7), capital(24, 7);
    text(small.renderer, 0, 0, "az", rgba(255, 255, 255), 1);
    text(capital.renderer, 0, 0, "AZ", rgba(255, 255, 255), 1);
    std::vector<std::uint32_t> a(24 * 7), b(24 * 7);
    SDL_RenderReadPixels(small.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, a.data(), 24 * 4);
    SDL_RenderReadPixels(capital.renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, b.data(), 24 * 4);
    EXPECT_EQ(b, a);
}
