// Where the world is saved. The path is built once per process, so each case
// runs in a forked child with its own environment.
#include "save/save_path.h"

#include <gtest/gtest.h>

#include "save/save_support.h"

namespace {

using namespace save_test;

// True when a child with `set_env` applied gets `want`, the same buffer on every call.
bool child_gets(const std::function<void()>& set_env, const std::string& want) {
    return run_in_child([&] {
        set_env();
        const char* first = game_default_save_path();
        return first == game_default_save_path() && want == first ? 0 : 1;
    }) == 0;
}

TEST(SavePath, InTheUsersDataFolderElseTheBareName) {
    ScratchDir dir;
    const std::string data = dir.file("data");
    EXPECT_TRUE(child_gets([&] { setenv("XDG_DATA_HOME", data.c_str(), 1); },
                           data + "/duskwell/talven/talven_world.tvw"));
    EXPECT_TRUE(fs::is_directory(data + "/duskwell/talven"));
    // No folder to be found: the file lands in the working directory.
    EXPECT_TRUE(child_gets([] { unsetenv("XDG_DATA_HOME"); unsetenv("HOME"); }, "talven_world.tvw"));
}

}  // namespace
