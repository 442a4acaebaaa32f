// The real program in play, ended by a signal: SIGHUP saves like SIGTERM (and
// stays ignored under nohup); under a file-size limit that save fails with the
// usual message instead of the game being killed; without a per-user folder the
// game says once where the world goes; a save path one byte too long for its
// 1024-byte buffer saves nothing anywhere, one that just fits saves as usual.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <memory>
#include <thread>

#include "save/save_file.h"
#include "save/save_support.h"
#include "world/new_game.h"

namespace {

using namespace save_test;

struct Outcome {
    int exit_code = -1;  // -1 when it did not exit by itself
    std::string err;
    bool hang_up_ignored = false;  // when the signal was sent
};

// Whether `sig` is in the mask on the "SigCgt:" (caught) or "SigIgn:" line of
// process `pid`.
bool in_mask(pid_t pid, const std::string& mask, int sig) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(mask, 0) == 0) return (std::stoull(line.substr(mask.size()), nullptr, 16) >> (sig - 1)) & 1u;
    return false;
}

// Starts "--debug-game" in `cwd` with XDG_DATA_HOME = `data_home` and no HOME, a
// file-size limit of `fsize` bytes (0: none); under `nohup` SIGHUP is ignored and
// SIGTERM ends the game, otherwise SIGHUP, sent once the game handles it.
Outcome run_until(bool nohup, const std::string& cwd, const std::string& data_home, rlim_t fsize) {
    const int sig = nohup ? SIGTERM : SIGHUP;
    int err[2];
    if (pipe(err) != 0) return {};
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        const rlimit cap{fsize, fsize};
        if (chdir(cwd.c_str()) != 0 || (fsize != 0 && setrlimit(RLIMIT_FSIZE, &cap) != 0)) _exit(97);
        dup2(err[1], 2);
        setenv("XDG_DATA_HOME", data_home.c_str(), 1);
        unsetenv("HOME");
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        signal(SIGXFSZ, SIG_DFL);
        signal(SIGHUP, nohup ? SIG_IGN : SIG_DFL);
        execl(TALVEN_EXE, "talven", "--debug-game", static_cast<char*>(nullptr));
        _exit(98);
    }
    close(err[1]);
    Outcome r;
    int status = 0;
    bool signalled = false;
    for (int waited_ms = 0; waitpid(pid, &status, WNOHANG) == 0; waited_ms += 5) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        if (waited_ms > 30000) kill(pid, SIGKILL);
        if (signalled || !in_mask(pid, "SigCgt:", sig)) continue;
        r.hang_up_ignored = in_mask(pid, "SigIgn:", SIGHUP);
        signalled = kill(pid, sig) == 0;
    }
    if (WIFEXITED(status)) r.exit_code = WEXITSTATUS(status);
    char buf[512];
    for (ssize_t n; (n = read(err[0], buf, sizeof buf)) > 0;) r.err.append(buf, static_cast<std::size_t>(n));
    close(err[0]);
    return r;
}

TEST(ExitSave, SignalsLimitsAndFoldersEndTheGameAsTheyShould) {
    const std::string not_saved = "TALVEN: could not save the active world\n";
    const std::size_t FOLDER_AND_NAME = std::strlen("/duskwell/talven/talven_world.tvw");
    const struct Case {
        const char* what;
        bool nohup, home_is_a_file;  // SDL cannot make its folder in a file
        std::size_t path_length;  // 0: a short path
        rlim_t fsize;
        int exit_code;
        bool fallback_line, saved;
        int files;  // regular files left in the scratch folder
    } cases[] = {
        {"SIGTERM under nohup", true, false, 0, 0, 0, false, true, 1},
        {"SIGHUP", false, false, 0, 0, 0, false, true, 1},
        {"file-size limit", false, false, 0, 60 * 1024, 1, false, false, 1},
        {"no per-user folder", false, true, 0, 0, 0, true, true, 2},
        {"save path that just fits", false, false, 1023, 0, 0, false, true, 1},
        {"save path one byte too long", false, false, 1024, 0, 1, false, false, 0},
    };
    auto old_world = std::make_unique<Game>();
    game_new(old_world.get(), 3u, "OLD WORLD");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchDir dir;
        std::string home = dir.file("data");
        if (c.home_is_a_file) {
            ASSERT_TRUE(write_bytes(home, {}));
        }
        while (home.size() + FOLDER_AND_NAME < c.path_length) home += home.size() % 200 == 0 ? "/" : "d";
        const std::string save = c.home_is_a_file ? dir.file("talven_world.tvw")
                                                  : home + "/duskwell/talven/talven_world.tvw";
        // Under the limit the old save must survive the failed one byte for byte.
        Bytes old;
        if (c.fsize != 0) {
            fs::create_directories(fs::path(save).parent_path());
            ASSERT_TRUE(game_save(old_world.get(), save.c_str()));
            old = read_bytes(save);
        }

        const Outcome r = run_until(c.nohup, dir.path.string(), home, c.fsize);
        EXPECT_EQ(c.exit_code, r.exit_code);
        EXPECT_EQ(c.nohup, r.hang_up_ignored);
        const std::string fallback = "TALVEN: no per-user data folder, the world is saved in " + save + "\n";
        EXPECT_EQ((c.fallback_line ? fallback : "") + (c.exit_code != 0 ? not_saved : ""), r.err);
        auto loaded = std::make_unique<Game>();
        EXPECT_EQ(c.saved, game_load(loaded.get(), save.c_str()) && std::string(loaded->name) == "QA WORLD");
        if (c.fsize != 0) {
            EXPECT_EQ(old, read_bytes(save));
        }
        int files = 0;
        for (const auto& e : fs::recursive_directory_iterator(dir.path)) files += e.is_regular_file();
        EXPECT_EQ(c.files, files);
    }
}

}  // namespace
