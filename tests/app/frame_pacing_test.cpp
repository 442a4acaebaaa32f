// When the loop sleeps out the rest of a frame, and for how long.
#include "app/frame_pacing.h"

#include "app/app_support.h"
#include "app/demo.h"
#include "app/frame_step.h"
#include "render/canvas.h"

TEST(FramePacing, SleepsOnlyWhereTheDisplayDoesNotHoldThePresent) {
    const struct {
        bool unattended, vsync;
        int hz;
        float took;
        std::uint32_t ms;
    } cases[] = {
        {true, false, 60, 0.001f, 0},              // frame-limited runs never wait
        {false, false, 60, 0.004f, 12},            // 12.67 ms left, rounded down
        {false, false, 0, 0.0036f, 13},            // unknown rate: 60 Hz (61 Hz would leave 12.79)
        {false, false, -5, 0.0036f, 13},
        {false, false, 144, 0.001f, 5},            // 5.94 ms left: the display's own rate
        {false, false, 60, 0.02f, 0},              // over budget
        {false, true, 60, 0.0166f, 0},             // the present waited for the refresh
        {false, true, 60, 1.0f / 120.0f, 0},       // half a refresh could still be a real wait
        {false, true, 60, 0.0083f, 8},             // too fast for a real wait
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.ms, pacing_delay_ms(c.unattended, c.vsync, c.hz, c.took))
            << c.unattended << c.vsync << " " << c.hz << " " << c.took;
}

// The frame loop reads the renderer: whether it claims to wait for the display
// (SDL's software renderer claims it even where it cannot, which is why a claim
// alone is not trusted), the display's rate (none without a window), and the
// reset events that make the canvas again, in play and in a replay.
using FrameRenderer = app_test::HiddenWindow;

TEST_F(FrameRenderer, PacingClaimRateAndCanvasResets) {
    SDL_Renderer* renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
    EXPECT_EQ(true, frame_pacer_create(renderer, false).vsync_claimed);
    EXPECT_EQ(false, frame_pacer_create(nullptr, false).vsync_claimed);
    EXPECT_EQ(0, display_refresh_hz(nullptr));

    ViewCanvas canvas = canvas_create(renderer, SDL_GetWindowPixelFormat(window));
    canvas_destroy(&canvas);  // as if the device had taken it
    SDL_Event reset{.type = SDL_RENDER_TARGETS_RESET};
    SDL_PushEvent(&reset);
    frame_read_input(g.get(), window, &in, &canvas);
    EXPECT_NE(nullptr, canvas.texture);
    // A replay in a window reads the window's events itself, resets among them. It
    // must be the first in its process to ask for the save path, as under ctest.
    canvas_destroy(&canvas);
    RunOptions opts{};
    opts.replay = TALVEN_DEMO_DIR "/inventory_clicks.tvd";
    opts.max_frames = 1;  // cut short: no closing digest to check
    DemoSession demo{};
    ASSERT_TRUE(demo_session_open(&demo, &opts));
    ASSERT_TRUE(demo_session_start(&demo, g.get()));
    SDL_PushEvent(&reset);
    FrameTimer timer{};
    EXPECT_EQ(true, demo_session_step(&demo, g.get(), window, &in, &timer, &canvas));
    EXPECT_NE(nullptr, canvas.texture);
    demo_session_close(&demo, g.get(), opts);
    canvas_destroy(&canvas);
    SDL_DestroyRenderer(renderer);
}

// Measured time: each frame's step runs from the frame before it, here the first
// from a second ago and the next from the first. The title's notice counts down by them.
TEST_F(FrameRenderer, EachMeasuredStepStartsAtTheFrameBefore) {
    g->notice_timer = 10.0f;
    FrameTimer timer{SDL_GetPerformanceCounter() - SDL_GetPerformanceFrequency(), false};
    frame_step(g.get(), window, &in, &timer, nullptr, nullptr);
    frame_step(g.get(), window, &in, &timer, nullptr, nullptr);
    EXPECT_NEAR(9.0f, g->notice_timer, 0.25f);
}
