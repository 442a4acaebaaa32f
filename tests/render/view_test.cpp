// The play view and the frame dispatch, read back from a software canvas. The
// scenes use an empty world at t = 0.47 (full light: no darkness blending) with
// the player out of sight unless a test places it.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "core/tiles.h"
#include "render/render_support.h"
#include "render/view.h"

namespace {

constexpr std::uint32_t SKY_FULL = rgb(109, 168, 217);
constexpr std::uint32_t HUD = rgb(238, 241, 235);

std::unique_ptr<Game> empty_world() {
    auto g = blank_game();
    g->screen = SCREEN_PLAYING;
    g->time_of_day = 0.47f;
    g->player.x = 5000.0f;
    g->player.y = 100.0f;
    return g;
}

FrameInput pointer_at(int x, int y) {
    FrameInput in{};
    in.mouse_x = x;
    in.mouse_y = y;
    return in;
}

const FrameInput NO_POINTER = pointer_at(-100, -100);

TEST(PlayView, SkyAndHillsAtFullLight) {
    auto g = empty_world();
    Canvas c;
    render_game(c.renderer, g.get(), &NO_POINTER);
    EXPECT_EQ(c.at(320, 100), SKY_FULL);
    EXPECT_EQ(c.at(60, 150), rgb(44, 82, 104));  // far hill's sixth step
    EXPECT_EQ(c.at(60, 235), rgb(47, 91, 80));   // near hill
    // The far hill's seventh step has no width and must not leave a column.
    EXPECT_EQ(c.at(60, 140), SKY_FULL);
    EXPECT_EQ(c.at(60, 137), SKY_FULL);
}

bool sun_shows_at(float t) {
    auto g = empty_world();
    g->time_of_day = t;
    Canvas c;
    render_game(c.renderer, g.get(), &NO_POINTER);
    const float s = std::sin(t * 6.2831855f);
    const float co = std::cos(t * 6.2831855f);
    const auto x0 = static_cast<int>((co * -0.46f + 0.5f) * 640.0f);
    const auto y0 = static_cast<int>(s * 105.0f + 50.0f);
    const std::uint32_t px = c.at(x0, y0);
    // Under any darkness the sun stays redder than blue and the moon bluer than red.
    return (px >> 16) > (px & 255);
}

TEST(PlayView, MoonOnlyStrictlyBetweenItsBounds) {
    EXPECT_TRUE(sun_shows_at(0.55f));
    EXPECT_FALSE(sun_shows_at(std::nextafter(0.55f, 1.0f)));
    EXPECT_FALSE(sun_shows_at(std::nextafter(0.93f, 0.0f)));
    EXPECT_TRUE(sun_shows_at(0.93f));
}

TEST(PlayView, HeartsShowHalvesForOddHealth) {
    constexpr std::uint32_t full = rgb(224, 67, 83), lobe = rgb(240, 88, 96), empty = rgb(72, 48, 62);
    auto g = empty_world();
    g->player.max_hp = 10;
    g->player.hp = 7;
    Canvas c;
    render_game(c.renderer, g.get(), &NO_POINTER);
    auto left_half = [&](int i) { return c.at(18 + 14 * i - 4, 15); };
    auto right_half = [&](int i) { return c.at(18 + 14 * i + 2, 15); };
    auto right_lobe = [&](int i) { return c.at(18 + 14 * i + 1, 10); };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(left_half(i), full) << i;
        EXPECT_EQ(right_half(i), full) << i;
        EXPECT_EQ(right_lobe(i), lobe) << i;
    }
    EXPECT_EQ(left_half(3), full);
    EXPECT_EQ(right_half(3), empty);
    EXPECT_EQ(right_lobe(3), empty);
    EXPECT_EQ(left_half(4), empty);
    EXPECT_EQ(left_half(5), SKY_FULL);  // five hearts for 10 health

    g->player.max_hp = 0;
    Canvas none;
    render_game(none.renderer, g.get(), &NO_POINTER);
    EXPECT_EQ(none.at(14, 15), SKY_FULL);
}

TEST(PlayView, HotbarCountsSelectionAndItemName) {
    auto g = empty_world();
    g->player.inventory[2] = {TILE_DIRT, 12};
    g->player.inventory[3] = {TILE_STONE, 1};
    g->player.selected = 2;
    Canvas c;
    render_game(c.renderer, g.get(), &NO_POINTER);
    const int x2 = 150 + 34 * 2;
    EXPECT_EQ(c.at(x2, 332), rgb(255, 222, 95));      // selected outline
    EXPECT_EQ(c.at(x2 + 34, 332), rgb(83, 100, 112));  // the others
    EXPECT_EQ(c.at(x2 + 8 + 8, 329 + 8), rgb(116, 78, 53));  // the DIRT icon
    // "12" right-aligned: starts at x + 19; '1' lights its middle column on top.
    EXPECT_EQ(c.at(x2 + 19 + 2, 345), HUD);
    EXPECT_NE(c.at(x2 + 19 + 1, 345), HUD);
    EXPECT_EQ(c.at(x2 + 25 + 1, 345), HUD);  // '2'
    // A count of 1 shows no number.
    EXPECT_EQ(c.count(x2 + 34 + 18, 345, 14, 7, HUD), 0);
    // "DIRT" centred over the hotbar.
    EXPECT_EQ(c.at(320 - (24 - 1) / 2, 311), HUD);
    EXPECT_NE(c.at(320 - (24 - 1) / 2 - 1, 311), HUD);

    g->player.selected = 5;  // empty slot: no name at all
    Canvas empty;
    render_game(empty.renderer, g.get(), &NO_POINTER);
    EXPECT_EQ(empty.count(250, 311, 140, 7, HUD), 0);
}

TEST(PlayView, NameAndDayAreRightAlignedAndNoticeCentred) {
    auto g = empty_world();
    std::strcpy(g->name, "QA WORLD");
    g->day = 1;
    std::strcpy(g->notice, "HI");
    g->notice_timer = 1.0f;
    Canvas c;
    render_game(c.renderer, g.get(), &NO_POINTER);
    EXPECT_EQ(c.at(542, 10), HUD);  // "QA WORLD  DAY 1" starts at 631 - 90
    EXPECT_EQ(c.count(530, 10, 11, 7, HUD), 0);
    EXPECT_EQ(c.at(626, 16), HUD);  // the '1' ends its foot on column 628
    EXPECT_EQ(c.at(628, 16), HUD);
    EXPECT_EQ(c.at(315, 48), HUD);  // "HI" at 320 - (12 - 1) / 2
    EXPECT_EQ(c.at(314, 48), SKY_FULL);

    g->notice_timer = 0.0f;
    Canvas gone;
    render_game(gone.renderer, g.get(), &NO_POINTER);
    EXPECT_EQ(gone.at(315, 48), SKY_FULL);
}

TEST(PlayView, PointedTileOutlineAndCracksFollowThePointer) {
    auto g = empty_world();
    tile_at(*g, 5, 3) = TILE_STONE;
    g->player.mine_x = 9;  // cracks ignore the remembered tile
    g->player.mine_y = 9;
    g->player.mine_progress = tile_hardness(TILE_STONE) * 0.7f;  // 3 of 5 cracks
    const FrameInput in = pointer_at(5 * 16 + 3, 3 * 16 + 3);
    Canvas c;
    render_game(c.renderer, g.get(), &in);
    const int x = 80, y = 48;
    EXPECT_EQ(c.at(x, y + 8), rgb(255, 244, 171));
    EXPECT_EQ(c.at(x + 15, y + 8), rgb(255, 244, 171));
    auto bright = [&](int px, int py) { return (c.at(px, py) & 255) > 200; };
    for (int k = 0; k < 3; ++k) EXPECT_TRUE(bright(x + 2 + 3 * k, y + 2)) << k;
    EXPECT_FALSE(bright(x + 2 + 3 * 3, y + 2));

    g->player.mine_progress = 0.0f;
    Canvas idle;
    render_game(idle.renderer, g.get(), &in);
    EXPECT_EQ(idle.at(x + 2, y + 2), rgb(100, 108, 119));
    EXPECT_EQ(idle.at(x, y + 8), rgb(255, 244, 171));
}

TEST(PlayView, PlayerBlinksWhileHurtAndBobsWhileWalking) {
    constexpr std::uint32_t chest = rgb(111, 244, 204);
    auto g = empty_world();
    g->player.x = 100.0f;
    g->player.y = 100.0f;
    auto chest_row = [&]() {
        Canvas c;
        render_game(c.renderer, g.get(), &NO_POINTER);
        for (int y = 100; y < 130; ++y)
            if (c.at(106, y) == chest) return y;
        return -1;
    };
    EXPECT_EQ(chest_row(), 112);
    g->player.hurt_timer = 0.03f;  // 0.54: even, drawn
    EXPECT_EQ(chest_row(), 112);
    g->player.hurt_timer = 0.06f;  // 1.08: odd, hidden
    EXPECT_EQ(chest_row(), -1);
    g->player.hurt_timer = 0.0f;
    g->player.on_ground = 1;
    g->player.vx = -20.0f;
    g->tick = 5;
    EXPECT_EQ(chest_row(), 113);
    g->tick = 10;
    EXPECT_EQ(chest_row(), 112);
    g->tick = 5;
    g->player.vx = 10.0f;  // not fast enough to bob
    EXPECT_EQ(chest_row(), 112);
}

// Reading past column 511 would wrap into the next row's first tile.
TEST(PlayView, VisibleRangeStopsAtTheLastColumn) {
    auto g = empty_world();
    for (int row = 0; row < WORLD_H; ++row) tile_at(*g, 0, row) = TILE_STONE;
    g->camera_x = 7700.0f;
    g->camera_y = 0.0f;
    Canvas c;
    render_game(c.renderer, g.get(), &NO_POINTER);
    EXPECT_EQ(c.at(8192 - 7700 + 8, 100), SKY_FULL);
}

TEST(RenderGame, DispatchesByScreen) {
    auto g = empty_world();
    auto pixel = [&](std::uint32_t screen, int x, int y) {
        g->screen = screen;
        Canvas c;
        render_game(c.renderer, g.get(), &NO_POINTER);
        return c.at(x, y);
    };
    EXPECT_EQ(pixel(SCREEN_TITLE, 319, 150), rgb(114, 73, 42));   // the lamp post
    EXPECT_EQ(pixel(SCREEN_CREATE, 5, 5), rgb(13, 20, 34));
    EXPECT_EQ(pixel(SCREEN_INVENTORY, 32, 100), rgb(48, 70, 92));  // panel's inner outline
    EXPECT_EQ(pixel(SCREEN_PAUSE, 192, 150), rgb(48, 70, 92));
    EXPECT_EQ(pixel(SCREEN_PLAYING, 32, 100), SKY_FULL);
    EXPECT_EQ(pixel(9, 32, 100), SKY_FULL);  // unknown screens draw the play view alone
}

}  // namespace
