// What recording a demo adds to a frame: the real recorder writing to a file in
// /tmp, with the pointer moving and the frame time changing every frame (as in
// real play), a key press every half second, a whole-game digest every 60 frames
// and a flush every second. A 60 Hz frame lasts 16.7 ms; 2% of it is 333 us.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "app/demo.h"
#include "world/new_game.h"

namespace {

void BM_demo_record_frame(benchmark::State& state) {
    char scratch[] = "/tmp/talven-bench-XXXXXX";
    if (mkdtemp(scratch) == nullptr) std::abort();
    setenv("XDG_DATA_HOME", scratch, 1);  // the start reads no real save
    const std::string file = std::string(scratch) + "/bench.tvd";
    RunOptions opts{};
    opts.record = file.c_str();
    DemoSession demo{};
    const auto game = std::make_unique<Game>();
    game_new(game.get(), 5010501u, "QA WORLD");
    if (!demo_session_open(&demo, &opts) || !demo_session_start(&demo, game.get())) std::abort();

    FrameInput input{};
    SDL_Event key{};
    key.type = SDL_KEYDOWN;
    key.key.keysym.sym = SDLK_d;
    std::uint32_t frame = 0;
    for (auto _ : state) {
        ++frame;
        input.mouse_x = static_cast<std::int32_t>(frame % 640);
        input.right = (frame / 30) % 2;
        if (frame % 30 == 0) demo_record_event(demo.recorder, &key);
        demo_record_frame(demo.recorder, &input, 0.016f + static_cast<float>(frame % 7) * 0.0001f, game.get());
    }
    demo_session_close(&demo, game.get(), opts);
    std::remove(file.c_str());
    std::remove(scratch);
}
BENCHMARK(BM_demo_record_frame);

}  // namespace
