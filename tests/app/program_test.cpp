// The real program, started as a player or a script would start it.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

struct RunResult {
    int exit_code;
    std::string output;  // standard output and standard error together
    bool saved;          // the save file exists in the scratch data folder afterwards
};

// Runs the game with a scratch data folder so no real save file is touched.
RunResult run_talven(const std::string& args, const std::string& env = "") {
    const fs::path scratch = fs::temp_directory_path() / ("talven-prog-" + std::to_string(::getpid()));
    fs::create_directories(scratch);
    const std::string cmd = "cd '" + scratch.string() + "' && env XDG_DATA_HOME='" + scratch.string() +
                            "' SDL_VIDEODRIVER=dummy " + env + " '" TALVEN_EXE "' " + args + " 2>&1";
    RunResult r{-1, {}, false};
    FILE* pipe = ::popen(cmd.c_str(), "r");
    if (pipe == nullptr) return r;
    std::array<char, 512> buf{};
    size_t n = 0;
    while ((n = std::fread(buf.data(), 1, buf.size(), pipe)) > 0) r.output.append(buf.data(), n);
    const int status = ::pclose(pipe);
    r.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.saved = fs::exists(scratch / "duskwell" / "talven" / "talven_world.tvw");
    fs::remove_all(scratch);
    return r;
}

}  // namespace

TEST(Program, HelpAndVersionPrintAndSucceedWithoutAWindow) {
    // A broken video driver proves neither starts SDL.
    const std::string no_video = "SDL_VIDEODRIVER=no-such-driver";
    const RunResult help = run_talven("--help --version --selftest", no_video);
    EXPECT_EQ(0, help.exit_code);
    EXPECT_EQ("TALVEN\n  --selftest\n  --max-frames N\n  --screenshot FILE.bmp\n  --debug-game\n  --version\n  --record FILE\n  --replay FILE\n  --verify\n", help.output);
    const RunResult version = run_talven("--debug-game --version --help", no_video);
    EXPECT_EQ(0, version.exit_code);
    EXPECT_EQ("talven " TALVEN_VERSION "\n", version.output);
}

TEST(Program, SdlStartFailureIsReportedWithExitCodeOne) {
    const RunResult r = run_talven("--max-frames 1", "SDL_VIDEODRIVER=no-such-driver");
    EXPECT_EQ(r.exit_code, 1);
    EXPECT_EQ(r.output.rfind("SDL_Init: ", 0), 0u) << r.output;
}

TEST(Program, FrameLimitEndsTheRunWithoutSaving) {
    const RunResult r = run_talven("--debug-game --max-frames 5");
    EXPECT_EQ(r.exit_code, 0) << r.output;
    EXPECT_EQ(r.output, "");
    EXPECT_FALSE(r.saved) << "a run with a frame limit saved its world at exit";
}
