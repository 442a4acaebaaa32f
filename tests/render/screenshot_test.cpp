// Screenshots, on a software canvas and through the real program.
#include "render/screenshot.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "render/render_support.h"

namespace {

namespace fs = std::filesystem;

// Every test process has its own scratch data folder.
fs::path scratch() { return std::getenv("XDG_DATA_HOME"); }

// Only an exact output size is written, so screenshots compare pixel for pixel.
TEST(Screenshot, RefusesAnyOtherOutputSize) {
    const fs::path path = scratch() / "big.bmp";
    Canvas big(1280, 720);
    EXPECT_EQ(render_screenshot(big.renderer, path.c_str()), 0);
    EXPECT_STREQ(SDL_GetError(), "screenshot output must be exactly 640x360 (got 1280x720)");
    EXPECT_FALSE(fs::exists(path));
}

std::string slurp(const fs::path& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

struct ProgramRun {
    int exit_code;
    std::string out, err;
};

// The real program taking one screenshot, its data folder in scratch space.
ProgramRun run_talven(const fs::path& home, const std::string& shot, const char* more = "") {
    const std::string cmd = "XDG_DATA_HOME='" + home.string() + "' SDL_VIDEODRIVER=dummy '" TALVEN_EXE
                            "' --screenshot '" + shot + "' " + more + " >'" + (home / "out").string() + "' 2>'" +
                            (home / "err").string() + "'";
    const int status = std::system(cmd.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, slurp(home / "out"), slurp(home / "err")};
}

TEST(ScreenshotRun, WritesThePlayViewOrSaysWhyNot) {
    const fs::path home = scratch() / "run", shot = home / "debug.bmp", lost = home / "no" / "shot.bmp";
    fs::create_directories(home);
    const ProgramRun ok = run_talven(home, shot.string(), "--debug-game");
    EXPECT_EQ(ok.exit_code, 0) << ok.err;
    EXPECT_EQ(ok.out, "screenshot: " + shot.string() + "\n");
    SDL_Surface* bmp = SDL_LoadBMP(shot.c_str());
    ASSERT_NE(bmp, nullptr) << SDL_GetError();
    EXPECT_EQ(bmp->w, 640);
    EXPECT_EQ(bmp->h, 360);
    EXPECT_EQ(bmp->format->BitsPerPixel, 32);
    SDL_FreeSurface(bmp);
    for (const auto& entry : fs::recursive_directory_iterator(home)) EXPECT_NE(entry.path().extension(), ".tvw");

    const ProgramRun bad = run_talven(home, lost.string());
    EXPECT_EQ(bad.exit_code, 1);
    EXPECT_EQ(bad.out, "");
    EXPECT_EQ(bad.err, "screenshot failed: Couldn't open " + lost.string() + "\n");
    EXPECT_FALSE(fs::exists(home / "no"));
}

}  // namespace
