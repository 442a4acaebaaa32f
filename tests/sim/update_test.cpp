#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include <unistd.h>

#include "save/save_file.h"
#include "save/save_path.h"
#include "sim/creatures.h"
#include "sim/sim_fixtures.h"
#include "sim/update.h"

namespace {

using fixtures::STEP;

std::unique_ptr<Game> copy_of(const Game& g) {
    auto c = std::make_unique<Game>();
    std::memcpy(c.get(), &g, sizeof g);
    return c;
}

bool same(const Game& a, const Game& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// The player settled on the floor of a wide empty room (columns 100..160, rows
// 80..100). No creature spawns unless a test asks.
struct FrameUpdate : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    FrameInput in{};
    void SetUp() override {
        fixtures::arena(g, 100, 80, 160, 100);
        fixtures::stand_player(g, 130, 101);
        g.notice_timer = 0.0f;
        g.creature_spawn_timer = 1.0e9f;
        for (int i = 0; i < 5; ++i) step();
        ASSERT_EQ(g.player.on_ground, 1);
    }
    void step(float dt = STEP) { game_update(&g, &in, dt); }
};

}  // namespace

TEST_F(FrameUpdate, DoesNothingOffThePlayScreenOrWithoutAWorld) {
    in.right = 1;
    in.use_held = 1;
    for (std::uint32_t screen : {SCREEN_TITLE, SCREEN_CREATE, SCREEN_INVENTORY, SCREEN_PAUSE}) {
        g.screen = screen;
        auto before = copy_of(g);
        step(0.05f);
        EXPECT_TRUE(same(*before, g)) << "screen " << screen;
    }
    g.screen = SCREEN_PLAYING;
    g.world_open = 0;
    auto before = copy_of(g);
    step(0.05f);
    EXPECT_TRUE(same(*before, g));
}

TEST_F(FrameUpdate, LongStallsAdvanceExactlyOneTwentiethOfASecond) {
    in.right = 1;
    in.jump_pressed = 1;
    in.jump_held = 1;
    auto clamped = copy_of(g);
    game_update(clamped.get(), &in, 0.05f);
    for (float stall : {1.0f, 7.5f, 1.0e9f}) {
        auto stalled = copy_of(g);
        game_update(stalled.get(), &in, stall);
        EXPECT_TRUE(same(*clamped, *stalled)) << "dt " << stall;
    }
    auto frozen = copy_of(g);
    game_update(frozen.get(), &in, 0.0f);
    EXPECT_EQ(frozen->tick, g.tick + 1);
    EXPECT_EQ(frozen->player.x, g.player.x);
    EXPECT_EQ(frozen->time_of_day, g.time_of_day);
}

TEST_F(FrameUpdate, RunningAcceleratesAndBothKeysBrakeOnlyOnTheGround) {
    in.left = 1;
    step();
    EXPECT_EQ(g.player.vx, -(760.0f * STEP));
    EXPECT_EQ(g.player.facing, -1);
    for (int i = 0; i < 30; ++i) step();
    EXPECT_EQ(g.player.vx, -105.0f);

    in.right = 1;  // both held: no target
    step();
    EXPECT_EQ(g.player.vx, -105.0f + 820.0f * STEP);
    EXPECT_EQ(g.player.facing, -1);

    fixtures::put_player(g, 2000.0f, 1400.0f);  // mid-air: no drag
    g.player.on_ground = 0;
    g.player.vx = 60.0f;
    step();
    EXPECT_EQ(g.player.vx, 60.0f);
}

TEST_F(FrameUpdate, RunningIntoAWallStopsAndThenAcceleratesAgainFromRest) {
    fixtures::fill_tiles(g, 132, 99, 132, 100, TILE_STONE);
    in.right = 1;
    for (int i = 0; i < 60; ++i) step();
    EXPECT_LE(g.player.x + 12.0f, 132.0f * 16.0f + 0.01f);
    EXPECT_EQ(g.player.vx, 0.0f);
    const float stopped_x = g.player.x;
    fixtures::fill_tiles(g, 132, 99, 132, 100, TILE_EMPTY);
    step();
    EXPECT_EQ(g.player.vx, 760.0f * STEP);
    EXPECT_GT(g.player.x, stopped_x);
}

TEST_F(FrameUpdate, JumpsOnlyFromTheGroundAndShortensWhenReleased) {
    auto released = copy_of(g);
    in.jump_pressed = 1;
    in.jump_held = 1;
    step();
    EXPECT_EQ(g.player.vy, -258.0f + 720.0f * STEP);
    EXPECT_EQ(g.player.on_ground, 0);
    const float rising = g.player.vy;
    step();  // pressed again in the air: lost, not buffered
    EXPECT_EQ(g.player.vy, rising + 720.0f * STEP);

    // Letting go while still rising fast adds the extra pull.
    FrameInput tap = in;
    game_update(released.get(), &tap, STEP);
    tap.jump_pressed = 0;
    tap.jump_held = 0;
    game_update(released.get(), &tap, STEP);
    EXPECT_EQ(released->player.vy, rising + 520.0f * STEP + 720.0f * STEP);
}

TEST_F(FrameUpdate, FallSpeedIsCappedButRiseIsNot) {
    fixtures::put_player(g, 2000.0f, 1400.0f);
    g.player.on_ground = 0;
    g.player.vy = 389.0f;
    step(0.05f);
    EXPECT_EQ(g.player.vy, 390.0f);
    g.player.vy = -400.0f;
    in.jump_held = 1;
    step(0.05f);
    EXPECT_EQ(g.player.vy, -400.0f + 720.0f * 0.05f);
}

TEST_F(FrameUpdate, DayClockWrapsIntoTheNextDayAndTicksCount) {
    g.time_of_day = 0.999f;
    const std::uint32_t day = g.day;
    step(0.05f);
    EXPECT_EQ(g.time_of_day, 0.99920833f);  // one frame is not enough to wrap
    EXPECT_EQ(g.day, day);
    for (int i = 0; i < 4; ++i) step(0.05f);
    EXPECT_EQ(g.day, day + 1);
    EXPECT_GT(g.time_of_day, 0.0f);
    EXPECT_LT(g.time_of_day, 0.001f);

    g.tick = 0xFFFFFFFFull;  // 64 bits: no wrap at 32
    step();
    EXPECT_EQ(g.tick, 0x100000000ull);
}

TEST_F(FrameUpdate, SpawnIntervalIsShorterOnlyStrictlyInsideTheNight) {
    const float times[] = {0.55f, std::nextafter(0.55f, 1.0f), 0.7f, std::nextafter(0.92f, 0.0f), 0.92f, 0.2f};
    const float intervals[] = {5.5f, 2.2f, 2.2f, 2.2f, 5.5f, 5.5f};
    for (int i = 0; i < 6; ++i) {
        g.time_of_day = times[i];
        g.creature_spawn_timer = 0.0f;
        step(0.0f);  // dt 0 keeps the clock on the boundary itself
        EXPECT_EQ(g.creature_spawn_timer, intervals[i]) << "time " << times[i];
    }
}

TEST_F(FrameUpdate, SpawnTimerRestartsEvenWhenEveryCreatureSlotIsTaken) {
    for (Creature& c : g.creatures) {
        c = Creature{};
        c.alive = 1;
        c.x = g.player.x + 200.0f;
        c.y = g.player.y;
    }
    auto table = copy_of(g);
    EXPECT_FALSE(creatures_try_spawn(&g));
    EXPECT_EQ(std::memcmp(table->creatures, g.creatures, sizeof g.creatures), 0);
    g.creature_spawn_timer = 0.01f;
    step(0.05f);
    EXPECT_EQ(g.creature_spawn_timer, 5.5f);
}

TEST_F(FrameUpdate, CameraNeverShowsOutsideTheWorld) {
    struct Case {
        float x, y;
        std::int32_t facing;
        float cam_x, cam_y;
    };
    const Case cases[] = {
        {2.0f, 2.0f, -1, 0.0f, 0.0f},
        {8192.0f - 12.0f, 2560.0f - 26.0f, 1, 7552.0f, 2200.0f},
    };
    fixtures::fill_tiles(g, 0, 0, 5, 5, TILE_STONE);
    fixtures::fill_tiles(g, 0, 0, 3, 2, TILE_EMPTY);
    fixtures::fill_tiles(g, WORLD_W - 3, WORLD_H - 3, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    for (const Case& c : cases) {
        fixtures::put_player(g, c.x, c.y);
        g.player.facing = c.facing;
        g.camera_x = c.cam_x == 0.0f ? -300.0f : 9000.0f;
        g.camera_y = c.cam_y == 0.0f ? -300.0f : 9000.0f;
        for (int i = 0; i < 200; ++i) {
            step(0.05f);
            ASSERT_TRUE(g.camera_x >= 0.0f && g.camera_x <= 7552.0f && g.camera_y >= 0.0f && g.camera_y <= 2200.0f);
        }
        EXPECT_EQ(g.camera_x, c.cam_x);
        EXPECT_EQ(g.camera_y, c.cam_y);
    }
}

TEST_F(FrameUpdate, NoticeTimesOutWhilePlaying) {
    game_notice(&g, "HELLO");
    for (int i = 0; i < 43; ++i) step(0.05f);
    EXPECT_GT(g.notice_timer, 0.0f);
    step(0.05f);
    step(0.05f);
    const float expired = g.notice_timer;
    EXPECT_LE(expired, 0.0f);
    step(0.05f);
    EXPECT_EQ(g.notice_timer, expired);  // stops counting once run out
}

TEST_F(FrameUpdate, PointersFarOutsideTheViewLeaveTheRecordConsistent) {
    g.player.mine_progress = 0.5f;
    in.use_held = 1;
    in.place = 1;
    auto before = copy_of(g);
    const std::int32_t extremes[] = {INT32_MIN, -100000, -1, 640, 100000, INT32_MAX};
    for (std::int32_t mx : extremes) {
        for (std::int32_t my : extremes) {
            in.mouse_x = mx;
            in.mouse_y = my;
            step();
        }
    }
    // Nothing within reach was pointed at: nothing dug, placed or struck, and the
    // work on the old target is gone.
    EXPECT_EQ(std::memcmp(before->tiles, g.tiles, sizeof g.tiles), 0);
    EXPECT_EQ(std::memcmp(before->player.inventory, g.player.inventory, sizeof g.player.inventory), 0);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
}

namespace {

// Points the save folder (and the working folder, for a bare file name) at a
// fresh scratch directory, so no test ever touches the real save file.
struct Autosave : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    FrameInput in{};
    std::string scratch;
    std::string old_data_home;
    bool had_data_home = false;
    char old_cwd[4096] = {};
    const char* path = nullptr;

    void SetUp() override {
        char dir[] = "/tmp/talven-autosave-XXXXXX";
        ASSERT_NE(mkdtemp(dir), nullptr);
        scratch = dir;
        if (const char* old = std::getenv("XDG_DATA_HOME")) {
            had_data_home = true;
            old_data_home = old;
        }
        ASSERT_EQ(setenv("XDG_DATA_HOME", dir, 1), 0);
        ASSERT_NE(getcwd(old_cwd, sizeof old_cwd), nullptr);
        ASSERT_EQ(chdir(dir), 0);
        path = game_default_save_path();
        if (path[0] == '/' && std::strncmp(path, dir, scratch.size()) != 0)
            GTEST_SKIP() << "save path was fixed earlier in this process: " << path;
        g.autosave_off = 0;
        g.notice_timer = 0.0f;
    }
    void TearDown() override {
        if (old_cwd[0] != '\0' && chdir(old_cwd) != 0) ADD_FAILURE() << "cannot return to " << old_cwd;
        if (had_data_home) setenv("XDG_DATA_HOME", old_data_home.c_str(), 1);
        else unsetenv("XDG_DATA_HOME");
        if (!scratch.empty()) std::system(("rm -rf '" + scratch + "'").c_str());
    }
};

}  // namespace

TEST_F(Autosave, FiresOnTheFrameThatReachesFortyFiveSecondsUnlessSwitchedOff) {
    g.autosave_off = 1;
    g.autosave_timer = 44.99f;
    for (int i = 0; i < 20; ++i) game_update(&g, &in, 0.05f);
    EXPECT_GT(g.autosave_timer, 45.9f);  // keeps growing, never saves
    EXPECT_EQ(g.notice_timer, 0.0f);
    EXPECT_FALSE(game_save_exists(path));

    g.autosave_off = 0;
    g.autosave_timer = 44.9f;
    game_update(&g, &in, 0.05f);
    EXPECT_EQ(g.notice_timer, 0.0f);
    game_update(&g, &in, 0.05f);
    EXPECT_EQ(g.autosave_timer, 0.0f);
    EXPECT_EQ(g.notice_timer, 2.2f);
    // The notice tells the outcome: a file on disk means it was saved.
    if (game_save_exists(path)) EXPECT_STREQ(g.notice, "WORLD SAVED");
    else EXPECT_STREQ(g.notice, "SAVE FAILED - WORLD STILL OPEN");
    EXPECT_EQ(g.world_open, 1);
}
