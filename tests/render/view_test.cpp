// The play view and the frame dispatch, read back from an empty world in full light.
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "core/tiles.h"
#include "render/render_support.h"

namespace {

constexpr std::uint32_t SKY = rgb(109, 168, 217), HUD = rgb(238, 241, 235);

// The far hills' last step has no width and must not leave a column at x = 60.
TEST(PlayView, UnknownScreensDrawSkyAndHillsAlone) {
    Canvas c;
    c.draw(*game_on(9));
    c.expect({{320, 100, SKY}, {60, 150, rgb(44, 82, 104)}, {60, 235, rgb(47, 91, 80)}, {60, 140, SKY}});
}

// The moon shows only strictly between 0.55 and 0.93; even darkened, the sun is
// redder than blue and the moon bluer.
TEST(PlayView, SunAndMoonSwitchAtTheirBounds) {
    const std::pair<float, bool> cases[] = {{0.55f, true}, {std::nextafter(0.55f, 1.0f), false},
                                            {std::nextafter(0.93f, 0.0f), false}, {0.93f, true}};
    for (const auto& [t, sun] : cases) {
        auto g = game_on(SCREEN_PLAYING);
        g->time_of_day = t;
        Canvas c;
        c.draw(*g);
        const std::uint32_t px = c.at(static_cast<int>((std::cos(t * 6.2831855f) * -0.46f + 0.5f) * 640.0f),
                                      static_cast<int>(std::sin(t * 6.2831855f) * 105.0f + 50.0f));
        EXPECT_EQ((px >> 16) > (px & 255), sun) << t;
    }
}

TEST(PlayView, HudHeartsAndHotbarCounts) {
    constexpr std::uint32_t red = rgb(224, 67, 83), lobe = rgb(240, 88, 96), empty = rgb(72, 48, 62);
    auto g = game_on(SCREEN_PLAYING);
    g->player.max_hp = 11;
    g->player.hp = 7;  // six hearts: three full, a left half, two empty
    g->player.inventory[2] = {TILE_DIRT, 12};
    g->player.inventory[3] = {TILE_STONE, 1};
    g->player.selected = 2;
    Canvas c;
    c.draw(*g);
    c.expect({{46, 15, red}, {48, 10, lobe}, {56, 15, red}, {60, 15, empty}, {61, 10, empty}, {70, 15, empty},
              {84, 15, empty}, {98, 15, SKY}});
    const int x = 150 + 34 * 2;  // "12" starts at x + 19; a count of 1 shows no number
    c.expect({{x, 332, rgb(255, 222, 95)}, {x + 34, 332, rgb(83, 100, 112)}, {x + 16, 337, rgb(116, 78, 53)},
              {x + 21, 345, HUD}, {x + 26, 345, HUD}});
    EXPECT_NE(c.at(x + 20, 345), HUD);
    EXPECT_EQ(c.count(x + 52, 345, 14, 7, HUD), 0);
}

}  // namespace
