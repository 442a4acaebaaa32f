#include <gtest/gtest.h>

#include <utility>

#include <cmath>
#include <cstdio>

#include "sim/autosave.h"
#include "sim/sim_fixtures.h"

using FrameUpdate = fixtures::Room;

// Menus and a closed world freeze everything: clock, creatures, drops, timers.
TEST_F(FrameUpdate, OnlyThePlayScreenWithAnOpenWorldMoves) {
    in.right = in.use_held = 1;
    for (const auto& [screen, open] : {std::pair{SCREEN_PAUSE, 1}, {SCREEN_INVENTORY, 1}, {SCREEN_PLAYING, 0}}) {
        auto w = fixtures::copy_of(g);
        w->screen = screen;
        w->world_open = static_cast<std::uint8_t>(open);
        const auto before = fixtures::copy_of(*w);
        game_update(w.get(), &in, 0.05f);
        EXPECT_TRUE(fixtures::same(*before, *w)) << screen;
    }
}

TEST_F(FrameUpdate, DayClockTakesFiveFramesToWrapFromNearlyOneAndNightSpawnsFaster) {
    g.time_of_day = 0.999f;  // on day 1 of a fresh world
    step(0.05f);
    EXPECT_TRUE(g.time_of_day == 0.99920833f && g.day == 1u);
    for (int i = 0; i < 4; ++i) step(0.05f);
    EXPECT_TRUE(g.day == 2u && g.time_of_day > 0.0f && g.time_of_day < 0.001f);
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
// its open air; the expected speeds are worked out by hand from the rules. A
// stall of any length advances exactly the same frame.
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
        const auto stalled = fixtures::copy_of(*w);
        game_update(w.get(), &input, 0.05f);
        game_update(stalled.get(), &input, 1.0e9f);
        EXPECT_TRUE(fixtures::same(*w, *stalled)) << r.what << " after a stall";
        const float vx = r.who == 0 ? w->player.vx : r.who == 1 ? w->creatures[0].vx : w->drops[0].vx;
        const float vy = r.who == 0 ? w->player.vy : r.who == 1 ? w->creatures[0].vy : w->drops[0].vy;
        EXPECT_FLOAT_EQ(vx, r.vx) << r.what;
        EXPECT_FLOAT_EQ(vy, r.vy) << r.what;
    }
}

// Pointing off the grid at either corner (within reach) must touch nothing.
TEST_F(FrameUpdate, CameraNeverShowsOutsideTheWorldAndPointersOffTheGridDoNothing) {
    fixtures::arena(g, 1, 1, 3, 2);
    fixtures::arena(g, WORLD_W - 4, WORLD_H - 3, WORLD_W - 2, WORLD_H - 2);
    fixtures::hold(g, TILE_DIRT, 5);
    in.use_held = in.place = 1;
    for (float corner : {0.0f, 1.0f}) {  // top-left, then bottom-right
        fixtures::put_player(g, 18.0f + 8142.0f * corner, 18.0f + 2498.0f * corner);
        g.camera_x = g.camera_y = corner == 0.0f ? -300.0f : 9000.0f;
        in.mouse_x = corner == 0.0f ? -1 : 650;  // column -1 or 512
        in.mouse_y = corner == 0.0f ? -1 : 370;  // row -1 or 160
        for (int i = 0; i < 200; ++i) step(0.05f);
        EXPECT_TRUE(g.camera_x == 7552.0f * corner && g.camera_y == 2200.0f * corner) << corner;
    }
    EXPECT_TRUE(g.player.inventory[0].count == 5 && g.player.mine_progress == 0.0f);
}

TEST_F(FrameUpdate, AutosavesOnTheFrameThatReachesFortyFiveSecondsUnlessSwitchedOff) {
    g.autosave_timer = 44.99f;
    step(0.05f);
    EXPECT_TRUE(g.autosave_timer > 45.0f && !autosave_due(&g));  // switched off: never saves
    g.autosave_off = 0;
    g.autosave_timer = 44.9f;
    step(0.05f);
    EXPECT_FALSE(autosave_due(&g));
    step(0.05f);
    EXPECT_TRUE(autosave_due(&g));
    autosave_finish(&g, true);
    EXPECT_TRUE(g.autosave_timer == 0.0f && std::strcmp(g.notice, "WORLD SAVED") == 0);
}
