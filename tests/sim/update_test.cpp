#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "save/save_file.h"
#include "save/save_path.h"
#include "sim/sim_fixtures.h"

using FrameUpdate = fixtures::Room;

TEST_F(FrameUpdate, LongStallsAdvanceExactlyOneTwentiethOfASecond) {
    in.right = in.jump_pressed = in.jump_held = 1;
    const auto clamped = fixtures::copy_of(g);
    game_update(clamped.get(), &in, 0.05f);
    for (float stall : {1.0f, 7.5f, 1.0e9f}) {
        const auto stalled = fixtures::copy_of(g);
        game_update(stalled.get(), &in, stall);
        EXPECT_TRUE(fixtures::same(*clamped, *stalled)) << "dt " << stall;
    }
    const float x = g.player.x, t = g.time_of_day;
    step(0.0f);  // a zero step moves nothing but still counts
    EXPECT_TRUE(g.tick == clamped->tick && g.player.x == x && g.time_of_day == t);
}

TEST_F(FrameUpdate, DayClockTakesFiveFramesToWrapFromNearlyOneAndNightSpawnsFaster) {
    g.time_of_day = 0.999f;
    const std::uint32_t day = g.day;
    step(0.05f);
    EXPECT_TRUE(g.time_of_day == 0.99920833f && g.day == day);
    for (int i = 0; i < 4; ++i) step(0.05f);
    EXPECT_TRUE(g.day == day + 1 && g.time_of_day > 0.0f && g.time_of_day < 0.001f);
    // Night lies strictly between 0.55 and 0.92; dt 0 keeps the clock on a bound.
    const float times[][2] = {{0.55f, 5.5f}, {std::nextafter(0.55f, 1.0f), 2.2f},
                              {std::nextafter(0.92f, 0.0f), 2.2f}, {0.92f, 5.5f}};
    for (const auto& t : times) {
        g.time_of_day = t[0];
        g.creature_spawn_timer = 0.0f;
        step(0.0f);
        EXPECT_EQ(g.creature_spawn_timer, t[1]) << "time " << t[0];
    }
}

TEST_F(FrameUpdate, CameraNeverShowsOutsideTheWorld) {
    fixtures::fill_tiles(g, 0, 0, 5, 5, TILE_STONE);
    fixtures::fill_tiles(g, 0, 0, 3, 2, TILE_EMPTY);
    fixtures::fill_tiles(g, WORLD_W - 3, WORLD_H - 3, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    for (float corner : {0.0f, 1.0f}) {  // top-left facing left, bottom-right facing right
        fixtures::put_player(g, 2.0f + 8178.0f * corner, 2.0f + 2532.0f * corner);
        g.player.facing = corner == 0.0f ? -1 : 1;
        g.camera_x = g.camera_y = corner == 0.0f ? -300.0f : 9000.0f;
        for (int i = 0; i < 200; ++i) step(0.05f);
        EXPECT_TRUE(g.camera_x == 7552.0f * corner && g.camera_y == 2200.0f * corner) << corner;
    }
}

TEST_F(FrameUpdate, PointersFarOutsideTheViewTouchNothing) {
    g.player.mine_progress = 0.5f;
    in.use_held = in.place = 1;
    const auto before = fixtures::copy_of(g);
    const std::int32_t extremes[] = {INT32_MIN, -100000, -1, 640, 100000, INT32_MAX};
    for (std::int32_t mx : extremes)
        for (std::int32_t my : extremes) {
            in.mouse_x = mx;
            in.mouse_y = my;
            step();
        }
    EXPECT_EQ(std::memcmp(before->tiles, g.tiles, sizeof g.tiles), 0);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
}

TEST_F(FrameUpdate, AutosavesOnTheFrameThatReachesFortyFiveSecondsUnlessSwitchedOff) {
    const char* path = game_default_save_path();
    std::remove(path);
    g.autosave_timer = 44.99f;
    for (int i = 0; i < 20; ++i) step(0.05f);
    EXPECT_GT(g.autosave_timer, 45.9f);  // switched off: keeps growing, never saves
    EXPECT_FALSE(game_save_exists(path));
    g.autosave_off = 0;
    g.autosave_timer = 44.9f;
    step(0.05f);
    EXPECT_FALSE(game_save_exists(path));
    step(0.05f);
    EXPECT_TRUE(g.autosave_timer == 0.0f && game_save_exists(path));
    EXPECT_STREQ(g.notice, "WORLD SAVED");
    std::remove(path);
}
