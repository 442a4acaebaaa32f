// Test support for the app: the real program started as a player or a script
// would (its own folders, no HOME, the dummy video driver, each stream kept;
// shell commands run first set limits and signals), and a hidden window.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <tuple>

#include "core/frame_input.h"
#include "core/game.h"

namespace app_test {

namespace fs = std::filesystem;

using Outcome = std::tuple<int, std::string, std::string>;  // exit code (-1: killed), standard output, standard error

// A folder inside this test process's own scratch data folder.
inline fs::path scratch(const std::string& name) { return fs::path(std::getenv("XDG_DATA_HOME")) / name; }

inline std::string drain(int fd) {
    std::string text;
    char buf[512];
    for (ssize_t n; (n = read(fd, buf, sizeof buf)) > 0;) text.append(buf, static_cast<std::size_t>(n));
    close(fd);
    return text;
}

// Runs `shell` (for example "ulimit -f 0; ") and then the program with `args`,
// calling `meanwhile` with its process id every 5 ms until it ends; a run that
// hangs is killed after 30 s.
inline Outcome run_talven(const std::string& args, const std::string& shell = "", const fs::path& cwd = scratch("run"),
                          const fs::path& data_home = scratch("run"), const std::function<void(pid_t)>& meanwhile = {}) {
    fs::create_directories(cwd);
    const std::string cmd = "cd '" + cwd.string() + "' && unset HOME && export SDL_VIDEODRIVER=dummy XDG_DATA_HOME='" +
                            data_home.string() + "' && " + shell + "exec '" TALVEN_EXE "' " + args;
    int out[2], err[2];
    if (pipe(out) != 0 || pipe(err) != 0) std::abort();
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(out[1], 1);
        dup2(err[1], 2);
        execl("/bin/sh", "sh", "-c", cmd.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    close(err[1]);
    int status = 0;
    for (int waited_ms = 0; waitpid(pid, &status, WNOHANG) == 0; waited_ms += 5) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        if (waited_ms > 30000) kill(pid, SIGKILL);
        if (meanwhile) meanwhile(pid);
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, drain(out[0]), drain(err[0])};
}

// A key pressed (or, with `repeat`, held down until it repeats), as SDL queues it.
inline SDL_Event key_down(SDL_Keycode k, bool repeat = false) {
    return SDL_Event{.key = {SDL_KEYDOWN, 0, 0, SDL_PRESSED, repeat, 0, 0, {SDL_SCANCODE_UNKNOWN, k, 0, 0}}};
}

// SDL's video with one hidden, resizable 1280 x 720 window, and a game that runs.
class HiddenWindow : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        window = SDL_CreateWindow("TALVEN", 0, 0, 1280, 720, SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE);
        ASSERT_NE(window, nullptr) << SDL_GetError();
        g->running = 1;
    }
    void TearDown() override {
        SDL_DestroyWindow(window);
        SDL_Quit();
    }

    SDL_Window* window = nullptr;
    std::unique_ptr<Game> g = std::make_unique<Game>();
    FrameInput in{};
};

}  // namespace app_test
