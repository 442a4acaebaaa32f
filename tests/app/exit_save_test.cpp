// The real program in play, ended by a signal: SIGHUP saves like SIGTERM (and
// stays ignored under nohup); under a
// file-size limit that save fails with the usual message instead of the game being
// killed; without a per-user folder the game says once where the world goes; a
// data folder too long for the save path saves nothing anywhere.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>

#include <csignal>
#include <chrono>
#include <fstream>
#include <memory>
#include <thread>

#include "save/save_file.h"
#include "save/save_support.h"
#include "world/new_game.h"

namespace {

using namespace save_test;

struct Outcome {
    int exit_code;  // -1 when it did not exit by itself
    std::string err;
    bool hang_up_ignored;  // when `sig` was sent
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
// file-size limit of `fsize` bytes (0: none) and SIGHUP ignored under `nohup`;
// sends `sig` once the game handles it.
Outcome run_until(int sig, const std::string& cwd, const std::string& data_home, rlim_t fsize, bool nohup) {
    int err[2];
    if (pipe(err) != 0) return {-1, "pipe", false};
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        const rlimit cap{fsize, fsize};
        const int null = open("/dev/null", O_WRONLY);
        if (chdir(cwd.c_str()) != 0 || (fsize != 0 && setrlimit(RLIMIT_FSIZE, &cap) != 0) || null < 0) _exit(97);
        dup2(null, 1);
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
    Outcome r{-1, {}, false};
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

int regular_files_under(const fs::path& root) {
    int n = 0;
    for (const auto& e : fs::recursive_directory_iterator(root)) n += e.is_regular_file();
    return n;
}

enum class Home { Scratch, AFile, TooLong };

TEST(ExitSave, SignalsLimitsAndFoldersEndTheGameAsTheyShould) {
    const std::string not_saved = "TALVEN: could not save the active world\n";
    const struct Case {
        const char* what;
        int sig;
        bool nohup;
        Home home;
        rlim_t fsize;
        bool old_save;
        int exit_code;
        bool fallback_line, failure_line, saved;
        int files;  // regular files left in the scratch folder
    } cases[] = {
        {"SIGTERM under nohup", SIGTERM, true, Home::Scratch, 0, false, 0, false, false, true, 1},
        {"SIGHUP", SIGHUP, false, Home::Scratch, 0, false, 0, false, false, true, 1},
        {"file-size limit", SIGHUP, false, Home::Scratch, 60 * 1024, true, 1, false, true, false, 1},
        {"no per-user folder", SIGHUP, false, Home::AFile, 0, false, 0, true, false, true, 2},
        {"data folder too long", SIGHUP, false, Home::TooLong, 0, false, 1, false, true, false, 0},
    };
    auto old_world = std::make_unique<Game>();
    game_new(old_world.get(), 3u, "OLD WORLD");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchDir dir;
        std::string home = dir.file("data");
        if (c.home == Home::AFile) {
            ASSERT_TRUE(write_bytes(home, {}));  // SDL cannot make its folder in it
        }
        while (c.home == Home::TooLong && home.size() < 1000) home += home.size() % 200 == 0 ? "/" : "d";
        const std::string save = c.home == Home::AFile ? dir.file("talven_world.tvw")
                                                       : home + "/duskwell/talven/talven_world.tvw";
        Bytes old;
        if (c.old_save) {
            fs::create_directories(fs::path(save).parent_path());
            ASSERT_TRUE(game_save(old_world.get(), save.c_str()));
            old = read_bytes(save);
        }

        const Outcome r = run_until(c.sig, dir.path.string(), home, c.fsize, c.nohup);
        EXPECT_EQ(c.exit_code, r.exit_code);
        EXPECT_EQ(c.nohup, r.hang_up_ignored);
        const std::string fallback = "TALVEN: no per-user data folder, the world is saved in " + save + "\n";
        EXPECT_EQ((c.fallback_line ? fallback : "") + (c.failure_line ? not_saved : ""), r.err);
        auto loaded = std::make_unique<Game>();
        EXPECT_EQ(c.saved, game_load(loaded.get(), save.c_str()) && std::string(loaded->name) == "QA WORLD");
        if (c.old_save) {
            EXPECT_EQ(old, read_bytes(save));
        }
        EXPECT_EQ(c.files, regular_files_under(dir.path));
    }
}

}  // namespace
