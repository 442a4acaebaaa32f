// Where the world is saved. The path is built once per process, so each case
// runs in a forked child with its own environment.
#include "save/save_path.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "save/save_support.h"

namespace {

using namespace save_test;

constexpr const char* FILE_NAME = "talven_world.tvw";

// game_default_save_path() as a child with `set_env` applied sees it; empty when
// two calls disagree on the pointer or the text.
std::string save_path_in_child(const std::function<void()>& set_env) {
    int fds[2];
    if (pipe(fds) != 0) return "pipe failed";
    const int status = run_in_child([&] {
        close(fds[0]);
        set_env();
        const char* first = game_default_save_path();
        const char* again = game_default_save_path();
        if (first != again || std::strcmp(first, again) != 0) return 1;
        const std::size_t len = std::strlen(first);
        return write(fds[1], first, len) == static_cast<ssize_t>(len) ? 0 : 2;
    });
    close(fds[1]);
    std::string out;
    char buf[512];
    ssize_t n;
    while ((n = read(fds[0], buf, sizeof buf)) > 0) out.append(buf, static_cast<std::size_t>(n));
    close(fds[0]);
    return status == 0 ? out : "";
}

TEST(SavePath, InTheUsersDataFolder) {
    ScratchDir dir;
    const std::string data = dir.file("data");
    const std::string got = save_path_in_child([&] { setenv("XDG_DATA_HOME", data.c_str(), 1); });
    EXPECT_EQ(got, data + "/duskwell/talven/" + FILE_NAME);
    EXPECT_TRUE(fs::is_directory(data + "/duskwell/talven"));
}

TEST(SavePath, BareNameWithoutAFolder) {
    const std::string got = save_path_in_child([] {
        unsetenv("XDG_DATA_HOME");
        unsetenv("HOME");
    });
    EXPECT_EQ(got, FILE_NAME);
}

TEST(SavePath, CutAt1023Characters) {
    ScratchDir dir;
    std::string data = dir.path().string();
    while (data.size() < 1000) {
        const std::size_t part = std::min<std::size_t>(200, 999 - data.size());
        data += '/';
        data.append(part, 'p');
    }
    ASSERT_EQ(data.size(), 1000u);
    fs::create_directories(data);
    const std::string got = save_path_in_child([&] { setenv("XDG_DATA_HOME", data.c_str(), 1); });
    EXPECT_EQ(got, (data + "/duskwell/talven/" + FILE_NAME).substr(0, 1023));
}

}  // namespace
