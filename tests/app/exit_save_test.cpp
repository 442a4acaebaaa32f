// The real program in play, ended by a signal: SIGHUP saves like SIGTERM (and
// stays ignored under nohup); under a file-size limit that save fails with the
// usual message instead of the game being killed; without a per-user folder the
// game says once where the world goes; a save path one byte too long for its
// 1024-byte buffer saves nothing anywhere, one that just fits saves as usual.

#include <cstring>

#include "app/app_support.h"
#include "save/save_file.h"
#include "save/save_support.h"
#include "world/new_game.h"

namespace {

using namespace save_test;

// Whether `sig` is in the mask on the "SigCgt:" (caught) or "SigIgn:" line of
// process `pid`.
bool in_mask(pid_t pid, const std::string& mask, int sig) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(mask, 0) == 0) return (std::stoull(line.substr(mask.size()), nullptr, 16) >> (sig - 1)) & 1u;
    return false;
}

TEST(ExitSave, SignalsLimitsAndFoldersEndTheGameAsTheyShould) {
    const std::string not_saved = "TALVEN: could not save the active world\n";
    const std::size_t FOLDER_AND_NAME = std::strlen("/duskwell/talven/talven_world.tvw");
    const struct Case {
        const char* what;
        bool nohup, home_is_a_file;  // SDL cannot make its folder in a file
        std::size_t path_length;  // 0: a short path
        int fsize;  // bytes a file may grow to; 0: no limit
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

        // Under nohup SIGHUP is ignored and SIGTERM ends the game, otherwise SIGHUP,
        // sent once the game handles it.
        const int sig = c.nohup ? SIGTERM : SIGHUP;
        bool signalled = false, hang_up_ignored = false;
        std::string shell = c.nohup ? "trap '' HUP; " : "";
        if (c.fsize != 0) shell += "ulimit -f " + std::to_string(c.fsize / 512) + "; ";  // in 512-byte blocks
        const auto [exit_code, out, err] = app_test::run_talven("--debug-game", shell, dir.path, home, [&](pid_t pid) {
            if (signalled || !in_mask(pid, "SigCgt:", sig)) return;
            hang_up_ignored = in_mask(pid, "SigIgn:", SIGHUP);
            signalled = kill(pid, sig) == 0;
        });
        EXPECT_EQ(c.exit_code, exit_code);
        EXPECT_EQ(c.nohup, hang_up_ignored);
        const std::string fallback = "TALVEN: no per-user data folder, the world is saved in " + save + "\n";
        EXPECT_EQ((c.fallback_line ? fallback : "") + (c.exit_code != 0 ? not_saved : ""), err);
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
