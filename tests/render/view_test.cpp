// The play view and the frame dispatch. Scenes are an empty world at t = 0.47,
// full light (no darkness blending), with the player out of sight unless placed.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "core/tiles.h"
#include "render/render_support.h"
#include "render/view.h"

namespace {

constexpr std::uint32_t SKY = rgb(109, 168, 217);
constexpr std::uint32_t HUD = rgb(238, 241, 235);

std::unique_ptr<Game> empty_world() {
    auto g = blank_game();
    g->screen = SCREEN_PLAYING;
    g->time_of_day = 0.47f;
    g->player.x = 5000.0f;
    return g;
}

void draw(Canvas& c, const Game& g, int mouse_x = -100, int mouse_y = -100) {
    FrameInput in{};
    in.mouse_x = mouse_x;
    in.mouse_y = mouse_y;
    render_game(c.renderer, &g, &in);
}

// The far hills' last step has no width and must not leave a column at x = 60.
TEST(PlayView, SkyAndHillsAtFullLight) {
    auto g = empty_world();
    g->screen = 9;  // unknown screens draw the play view alone
    Canvas c;
    draw(c, *g);
    c.expect({{320, 100, SKY}, {60, 150, rgb(44, 82, 104)}, {60, 235, rgb(47, 91, 80)}, {60, 140, SKY}});
}

bool sun_at(float t) {
    auto g = empty_world();
    g->time_of_day = t;
    Canvas c;
    draw(c, *g);
    const std::uint32_t px = c.at(static_cast<int>((std::cos(t * 6.2831855f) * -0.46f + 0.5f) * 640.0f),
                                  static_cast<int>(std::sin(t * 6.2831855f) * 105.0f + 50.0f));
    return (px >> 16) > (px & 255);  // even darkened, the sun is redder than blue, the moon bluer
}

TEST(PlayView, MoonOnlyStrictlyBetweenItsBounds) {
    EXPECT_TRUE(sun_at(0.55f));
    EXPECT_FALSE(sun_at(std::nextafter(0.55f, 1.0f)));
    EXPECT_FALSE(sun_at(std::nextafter(0.93f, 0.0f)));
    EXPECT_TRUE(sun_at(0.93f));
}

TEST(PlayView, HudHeartsHotbarNameAndNotice) {
    constexpr std::uint32_t red = rgb(224, 67, 83), lobe = rgb(240, 88, 96), empty = rgb(72, 48, 62);
    auto g = empty_world();
    g->player.max_hp = 10;
    g->player.hp = 7;  // three hearts, a left half, an empty one
    g->player.inventory[2] = {TILE_DIRT, 12};
    g->player.inventory[3] = {TILE_STONE, 1};
    g->player.selected = 2;
    std::strcpy(g->name, "QA WORLD");
    g->day = 1;
    std::strcpy(g->notice, "HI");
    g->notice_timer = 1.0f;
    Canvas c;
    draw(c, *g);
    c.expect({{46, 15, red}, {48, 10, lobe}, {56, 15, red}, {60, 15, empty}, {61, 10, empty}, {70, 15, empty},
              {84, 15, SKY}});
    const int x = 150 + 34 * 2;
    c.expect({{x, 332, rgb(255, 222, 95)}, {x + 34, 332, rgb(83, 100, 112)}, {x + 16, 337, rgb(116, 78, 53)},
              {x + 21, 345, HUD}, {x + 26, 345, HUD}});  // "12" starts at x + 19
    EXPECT_NE(c.at(x + 20, 345), HUD);
    EXPECT_EQ(c.count(x + 52, 345, 14, 7, HUD), 0);  // a count of 1 shows no number
    c.expect({{309, 311, HUD}, {542, 10, HUD}, {628, 16, HUD}, {315, 48, HUD}, {314, 48, SKY}});
    EXPECT_EQ(c.count(530, 10, 11, 7, HUD), 0);  // "DIRT" centred; name and day end at 630; "HI"

    g->player.selected = 5;
    g->player.max_hp = 0;
    g->notice_timer = 0.0f;
    Canvas quiet;
    draw(quiet, *g);
    EXPECT_EQ(quiet.count(250, 311, 140, 7, HUD), 0);  // an empty slot has no name
    quiet.expect({{14, 15, SKY}, {315, 48, SKY}});
}

TEST(PlayView, PointedTileOutlineAndCracksFollowThePointer) {
    auto g = empty_world();
    tile_at(*g, 5, 3) = TILE_STONE;
    g->player.mine_x = 9;  // cracks ignore the remembered tile
    g->player.mine_y = 9;
    g->player.mine_progress = tile_hardness(TILE_STONE) * 0.7f;  // 3 of 5 cracks
    Canvas c;
    draw(c, *g, 83, 51);
    c.expect({{80, 56, rgb(255, 244, 171)}, {95, 56, rgb(255, 244, 171)}});
    for (int k = 0; k < 4; ++k) EXPECT_EQ((c.at(82 + 3 * k, 50) & 255) > 200, k < 3) << k;

    g->player.mine_progress = 0.0f;
    Canvas idle;
    draw(idle, *g, 83, 51);
    EXPECT_EQ(idle.at(82, 50), rgb(100, 108, 119));
}

TEST(PlayView, PlayerBlinksWhileHurtAndBobsWhileWalking) {
    auto g = empty_world();
    g->player.x = g->player.y = 100.0f;
    g->player.on_ground = 1;
    // hurt timer, vx, tick, row of the chest light (-1: not drawn)
    const float cases[][4] = {{0.0f, 0, 5, 112}, {0.03f, 0, 0, 112}, {0.06f, 0, 0, -1},
                              {0.0f, -20, 5, 113}, {0.0f, -20, 10, 112}, {0.0f, 10, 5, 112}};
    for (const auto& k : cases) {
        g->player.hurt_timer = k[0];
        g->player.vx = k[1];
        g->tick = static_cast<std::uint64_t>(k[2]);
        Canvas c;
        draw(c, *g);
        int row = -1;
        for (int y = 129; y >= 100; --y) row = c.at(106, y) == rgb(111, 244, 204) ? y : row;
        EXPECT_EQ(row, static_cast<int>(k[3])) << k[0] << " " << k[1] << " " << k[2];
    }
}

// Reading past column 511 would wrap into the next row's first tile.
TEST(PlayView, VisibleRangeStopsAtTheLastColumn) {
    auto g = empty_world();
    for (int row = 0; row < WORLD_H; ++row) tile_at(*g, 0, row) = TILE_STONE;
    g->camera_x = 7700.0f;
    Canvas c;
    draw(c, *g);
    EXPECT_EQ(c.at(8192 - 7700 + 8, 100), SKY);
}

}  // namespace
