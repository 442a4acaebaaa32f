// Where the world is saved: the per-user data folder, else the bare file name.
#include "save/save_path.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "save/save_support.h"

namespace {

using namespace save_test;

// Builds the path with XDG_DATA_HOME and HOME set as given (null = unset), then
// puts both back as they were: an unset variable stays unset, never empty, since an
// empty XDG_DATA_HOME would send later saves to the filesystem root.
std::string path_with(const char* data_home, const char* home) {
    auto get = [](const char* name) -> std::optional<std::string> {
        const char* v = std::getenv(name);
        return v ? std::optional<std::string>(v) : std::nullopt;
    };
    auto set = [](const char* name, const char* value) { value ? setenv(name, value, 1) : unsetenv(name); };
    const std::optional<std::string> old_data = get("XDG_DATA_HOME"), old_home = get("HOME");
    set("XDG_DATA_HOME", data_home);
    set("HOME", home);
    char out[1024];
    build_save_path(out, sizeof out);
    set("XDG_DATA_HOME", old_data ? old_data->c_str() : nullptr);
    set("HOME", old_home ? old_home->c_str() : nullptr);
    return out;
}

TEST(SavePath, InTheUsersDataFolderElseTheBareName) {
    ScratchDir dir;
    const std::string data = dir.file("data");
    EXPECT_EQ(path_with(data.c_str(), nullptr), data + "/duskwell/talven/talven_world.tvw");
    EXPECT_TRUE(fs::is_directory(data + "/duskwell/talven"));
    EXPECT_EQ(path_with(nullptr, nullptr), "talven_world.tvw");
}

TEST(SavePath, BuiltOnceAndKeptForTheRun) {
    const char* first = game_default_save_path();
    EXPECT_EQ(first, game_default_save_path());
    EXPECT_NE(std::string(first).find("talven_world.tvw"), std::string::npos);
}

}  // namespace
