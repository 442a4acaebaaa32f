// Where the world is saved: the per-user data folder, else the bare file name.
#include "save/save_path.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "save/save_support.h"

namespace {

using namespace save_test;

// Builds the path in a child with XDG_DATA_HOME as given (null = unset) and HOME
// unset, so the test process keeps its own environment.
bool path_is(const char* data_home, const std::string& want) {
    return run_in_child([&] {
        data_home != nullptr ? setenv("XDG_DATA_HOME", data_home, 1) : unsetenv("XDG_DATA_HOME");
        unsetenv("HOME");
        char out[1024];
        build_save_path(out, sizeof out);
        if (want == out) return 0;
        std::fprintf(stderr, "save path: %s\n", out);
        return 1;
    }) == 0;
}

TEST(SavePath, InTheUsersDataFolderElseTheBareName) {
    ScratchDir dir;
    const std::string data = dir.file("data");
    EXPECT_TRUE(path_is(data.c_str(), data + "/duskwell/talven/talven_world.tvw"));
    EXPECT_TRUE(fs::is_directory(data + "/duskwell/talven"));
    EXPECT_TRUE(path_is(nullptr, "talven_world.tvw"));
}

}  // namespace
