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

// One 0.05 s frame of each kind of motion, from rest on the room's floor or in
// its open air; the expected speeds are worked out by hand from the rules.
TEST_F(FrameUpdate, OneFrameOfPlayerCreatureAndDropMotion) {
    struct Row {
        const char* what;
        void (*set_up)(Game&, FrameInput&);
        float vx, vy;  // afterwards: player, else creature 0, else drop 0
        int who;       // 0 player, 1 creature, 2 drop
    };
    const Row rows[] = {
        {"run start", [](Game&, FrameInput& i) { i.right = 1; }, 38.0f, 0.0f, 0},
        {"running jump", [](Game&, FrameInput& i) { i.right = i.jump_pressed = i.jump_held = 1; }, 38.0f, -222.0f, 0},
        {"short hop", [](Game&, FrameInput& i) { i.jump_pressed = 1; }, 0.0f, -196.0f, 0},
        {"both keys brake", [](Game& w, FrameInput& i) { i.left = i.right = 1; w.player.vx = 60.0f; }, 19.0f, 0.0f, 0},
        {"air keeps speed", [](Game& w, FrameInput&) { fixtures::put_player(w, 2000.0f, 1400.0f); w.player.vx = 60.0f; w.player.vy = 380.0f; w.player.on_ground = 0; }, 60.0f, 390.0f, 0},
        {"air control", [](Game& w, FrameInput& i) { fixtures::put_player(w, 2000.0f, 1400.0f); w.player.on_ground = 0; i.left = 1; }, -19.5f, 36.0f, 0},
        {"large chases", [](Game& w, FrameInput&) { fixtures::creature_at(w, 0, 2000.0f, 1601.0f, 1).on_ground = 1; }, 4.6f, 0.0f, 1},
        {"small wanders", [](Game& w, FrameInput&) { fixtures::creature_at(w, 0, 1700.0f, 1601.0f).on_ground = 1; }, 22.0f, 0.0f, 1},
        {"drop settles", [](Game& w, FrameInput&) { w.drops[0] = Drop{1700.0f, 1607.0f, 10.0f, 0.0f, TILE_DIRT, 1, 40.0f, 1}; }, 8.5f, 0.0f, 2},
    };
    for (const Row& r : rows) {
        auto w = fixtures::copy_of(g);
        FrameInput input{};
        r.set_up(*w, input);
        game_update(w.get(), &input, 0.05f);
        const float vx = r.who == 0 ? w->player.vx : r.who == 1 ? w->creatures[0].vx : w->drops[0].vx;
        const float vy = r.who == 0 ? w->player.vy : r.who == 1 ? w->creatures[0].vy : w->drops[0].vy;
        EXPECT_FLOAT_EQ(vx, r.vx) << r.what;
        EXPECT_FLOAT_EQ(vy, r.vy) << r.what;
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
