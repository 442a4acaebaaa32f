// The program as a player or a script starts it. Unattended runs step exactly
// 1/60 s a frame, so their screenshots are the same every time.

#include "app/frame_clock.h"
#include "app/app_support.h"
#include "render/render_support.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

using namespace app_test;

void expect_screenshot(std::uint32_t digest, const fs::path& file) {
    const std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> bmp(SDL_LoadBMP(file.c_str()), SDL_FreeSurface);
    ASSERT_NE(bmp, nullptr) << SDL_GetError();
    expect_picture(digest, bmp.get(), file.stem().string());
}

// The stop word wins over what follows, and neither the usage nor the version
// starts SDL (the broken video driver would fail); a video driver that cannot
// start is named on standard error; the self-test passes and removes its save.
TEST(Program, HelpStartFailureAndSelftest) {
    const std::string no_video = "export SDL_VIDEODRIVER=no-such-driver; ";
    const std::string usage = "TALVEN\n  --selftest\n  --max-frames N\n  --screenshot FILE.bmp\n  --debug-game\n"
                              "  --version\n  --record FILE\n  --replay FILE\n  --verify\n";
    EXPECT_EQ(run_talven("--help --selftest", no_video), Outcome(0, usage, ""));
    EXPECT_EQ(run_talven("--debug-game --version --help", no_video), Outcome(0, "talven " TALVEN_VERSION "\n", ""));
    const auto [code, out, err] = run_talven("--max-frames 1", no_video);
    EXPECT_EQ(std::pair(code, err.substr(0, 10)), std::pair(1, std::string("SDL_Init: ")));
    EXPECT_EQ(run_talven("--selftest"), Outcome(0, "TALVEN selftest: 29 checks, 0 failed\n", ""));
    EXPECT_FALSE(fs::exists(scratch("run") / "talven_selftest.tvw"));
}

// 90 frames of the debug world in fixed steps: the player has fallen to the
// ground under the new-world notice. A frame limit stops after exactly that many
// frames (the dummy video driver keeps each one as a file) and never saves.
TEST(Program, FrameLimitedRunsAreRepeatableAndNeverSave) {
    EXPECT_EQ(run_talven("--debug-game --max-frames 90 --screenshot debug-90-frames.bmp"),
              Outcome(0, "screenshot: debug-90-frames.bmp\n", ""));
    expect_screenshot(0xF3D93537u, scratch("run") / "debug-90-frames.bmp");
    EXPECT_EQ(run_talven("--debug-game --max-frames 2", "export SDL_VIDEO_DUMMY_SAVE_FRAMES=1; "), Outcome(0, "", ""));
    int presented = 0;
    for (const auto& entry : fs::directory_iterator(scratch("run")))
        presented += entry.path().stem().string().starts_with("SDL_window");
    EXPECT_EQ(presented, 2);
    EXPECT_FALSE(fs::exists(scratch("run") / "duskwell" / "talven" / "talven_world.tvw"));

    EXPECT_EQ(run_talven("--screenshot no/shot.bmp"), Outcome(1, "", "screenshot failed: Couldn't open no/shot.bmp\n"));

    // With a world to load, LOAD WORLD is lit from the first frame: the drawing
    // tests' "title-after-save" picture.
    const fs::path save = scratch("run") / "duskwell" / "talven" / "talven_world.tvw";
    const auto world = std::make_unique<Game>();
    game_new(world.get(), 5u, "SAVED");
    fs::create_directories(save.parent_path());
    ASSERT_TRUE(game_save(world.get(), save.c_str()));
    EXPECT_EQ(run_talven("--max-frames 1 --screenshot lit.bmp"), Outcome(0, "screenshot: lit.bmp\n", ""));
    expect_screenshot(0xFD6A8C71u, scratch("run") / "lit.bmp");
    fs::remove(save);
}

// Ten days of uptime in nanoseconds no longer fit a float: the difference of the
// two readings is taken first.
TEST(FrameClock, OneFrameAfterTenDaysOfUptime) {
    constexpr std::uint64_t NS = 1000000000ull, TEN_DAYS = 10ull * 86400ull * NS;
    EXPECT_FLOAT_EQ(elapsed_seconds(TEN_DAYS, TEN_DAYS + 16666667ull, NS), 0.016666667f);
}

}  // namespace
