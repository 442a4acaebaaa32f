// The frame step's edges that scripted play never reaches: stalls, the clock's
// bounds, the world's corners, the autosave and mining before placing. (Menus
// freezing the world is pinned by the recorded demos.)

#include <cmath>

#include "sim/autosave.h"
#include "sim/mining.h"
#include "sim/sim_fixtures.h"

using FrameUpdate = fixtures::Room;

// A stall advances one 0.05 s frame; it takes five of those to wrap from 0.999.
TEST_F(FrameUpdate, DayClockTakesFiveFramesToWrapFromNearlyOneAndNightSpawnsFaster) {
    g.time_of_day = 0.999f;  // on day 1 of a fresh world
    step(1.0e9f);
    EXPECT_EQ(0.99920833f, g.time_of_day);
    for (int i = 0; i < 4; ++i) step(0.05f);
    EXPECT_EQ(2u, g.day);
    EXPECT_NEAR(0.0000416f, g.time_of_day, 1e-6f);
    // A step that lands exactly on 1 is the next day's start: no save may hold a 1.
    g.time_of_day = std::nextafter(1.0f, 0.0f);
    step(240.0f / 16777216.0f);  // one float step below 1, over the day's 240 s
    EXPECT_EQ(0.0f, g.time_of_day);
    // Night lies strictly between 0.55 and 0.92; dt 0 keeps the clock on a bound.
    const float times[][2] = {{0.55f, 5.5f}, {std::nextafter(0.55f, 1.0f), 2.2f},
                              {std::nextafter(0.92f, 0.0f), 2.2f}, {0.92f, 5.5f}};
    for (const auto& t : times) {
        g.time_of_day = t[0];
        g.creature_spawn_timer = 0.0f;
        step(0.0f);
        EXPECT_EQ(t[1], g.creature_spawn_timer) << "time " << t[0];
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
        EXPECT_EQ(7552.0f * corner, g.camera_x);
        EXPECT_EQ(2200.0f * corner, g.camera_y);
    }
    EXPECT_EQ(5, g.player.inventory[0].count);
    EXPECT_EQ(0.0f, g.player.mine_progress);
}

TEST_F(FrameUpdate, AutosavesOnTheFrameThatReachesFortyFiveSecondsUnlessSwitchedOff) {
    g.autosave_timer = 44.99f;
    step(0.05f);
    EXPECT_FALSE(autosave_due(&g)) << "switched off, yet due at " << g.autosave_timer;
    g.autosave_off = 0;
    g.autosave_timer = 44.9f;
    step(0.05f);
    EXPECT_FALSE(autosave_due(&g));
    step(0.05f);
    EXPECT_TRUE(autosave_due(&g));
    autosave_finish(&g, false);
    EXPECT_EQ(0.0f, g.autosave_timer);
    EXPECT_STREQ("SAVE FAILED - WORLD STILL OPEN", g.notice);
    autosave_finish(&g, true);
    EXPECT_STREQ("WORLD SAVED", g.notice);
}

// The short hop's extra pull acts while rising faster than 100 px/s, not at exactly 100.
TEST_F(FrameUpdate, ShortHopPullStartsPastItsThreshold) {
    fixtures::put_player(g, 2082.0f, 1500.0f);
    g.player.vy = -100.0f;
    step(0.05f);
    EXPECT_EQ(-100.0f + 720.0f * 0.05f, g.player.vy);
}

// Mining comes first in a frame: a TORCH broken beside the player is taken and
// its cell built on in the same frame.
TEST_F(FrameUpdate, MiningComesBeforePlacingInAFrame) {
    fixtures::hold(g, TILE_DIRT, 6);
    tile_at(g, 129, 100) = TILE_TORCH;
    for (int i = 0; i < 5; ++i) game_attack_or_mine(&g, 129, 100, fixtures::STEP);
    fixtures::point_at(g, in, 129, 100);
    in.use_held = in.place = 1;
    step();
    EXPECT_EQ(TILE_DIRT, tile_at(g, 129, 100));
    EXPECT_EQ(TILE_TORCH, g.player.inventory[1].item);
}

// Both ways at once is neither: the player stands, still facing left.
TEST_F(FrameUpdate, BothWaysAtOnceStands) {
    g.player.facing = -1;
    in.left = in.right = 1;
    step();
    EXPECT_EQ(std::pair(0.0f, -1), std::pair(g.player.vx, g.player.facing));
}
