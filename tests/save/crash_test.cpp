// Saves killed at random moments: a child saves numbered worlds in a loop and is
// killed with SIGKILL. Each time the save must load and be the last save the
// child finished or the one it was finishing, with at most one stale temporary
// file beside it. TALVEN_CRASH_KILLS sets how many kills (`make soak` runs more).
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <signal.h>

#include <cstring>
#include <memory>
#include <random>

#include "save/save_file.h"
#include "save/save_support.h"
#include "world/new_game.h"

namespace {

using namespace save_test;

// World number `n`: its tick and one tile tell it from its neighbours.
void make_world(const Game& base, std::uint64_t n, Game* out) {
    std::memcpy(out, &base, sizeof base);
    out->tick = n;
    out->tiles[(n * 7919u) % sizeof out->tiles] = static_cast<std::uint8_t>(n % 17u);
}

// Saves worlds from + 1 on, reporting each finished one on `report`.
[[noreturn]] void save_forever(const Game& base, const std::string& path, std::uint64_t from, int report) {
    auto g = std::make_unique<Game>();
    for (std::uint64_t n = from + 1;; ++n) {
        make_world(base, n, g.get());
        if (!game_save(g.get(), path.c_str())) _exit(1);
        if (write(report, &n, sizeof n) != sizeof n) _exit(2);
    }
}

TEST(Crash, KilledSavesLeaveTheLastOrTheNextWorld) {
    ScratchDir dir;
    const std::string path = dir.file("world.tvw");
    auto base = std::make_unique<Game>(), world = std::make_unique<Game>(), loaded = std::make_unique<Game>();
    game_new(base.get(), 4242u, "CRASH WORLD");
    make_world(*base, 0, world.get());
    ASSERT_TRUE(game_save(world.get(), path.c_str()));

    std::mt19937 rng(12345);
    std::uint64_t finished = 0;
    const char* env = std::getenv("TALVEN_CRASH_KILLS");
    const int kills = env != nullptr && std::atoi(env) > 0 ? std::atoi(env) : 200;
    for (int kill_no = 0; kill_no < kills; ++kill_no) {
        int pipe_fds[2];
        ASSERT_EQ(0, pipe(pipe_fds));
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) save_forever(*base, path, finished, pipe_fds[1]);
        close(pipe_fds[1]);
        usleep(rng() % 4001u);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFSIGNALED(status)) << "the saving child stopped by itself: " << status;
        for (std::uint64_t n = 0; read(pipe_fds[0], &n, sizeof n) == sizeof n;) finished = n;
        close(pipe_fds[0]);

        SCOPED_TRACE("kill " + std::to_string(kill_no) + " after world " + std::to_string(finished));
        ASSERT_TRUE(game_load(loaded.get(), path.c_str()));
        const std::uint64_t n = loaded->tick;
        ASSERT_TRUE(n == finished || n == finished + 1) << "the save holds world " << n;
        make_world(*base, n, world.get());
        ASSERT_EQ(save_checksum(world.get()), save_checksum(loaded.get()));
        finished = n;
        // Beside the save at most the stale temporary file.
        for (const auto& e : fs::directory_iterator(dir.path))
            ASSERT_TRUE(e.path() == path || e.path() == path + ".tmp") << e.path();
    }
    EXPECT_GT(finished, 0u) << "no save ever finished: the kills proved nothing";
}

}  // namespace
