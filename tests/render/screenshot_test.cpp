// Screenshots, on a software canvas and through the real program.
#include "app/screenshot.h"

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>

#include "render/render_support.h"

namespace {

namespace fs = std::filesystem;

// Every test process has its own scratch data folder.
fs::path scratch() { return std::getenv("XDG_DATA_HOME"); }

// Only an exact output size is written, so screenshots compare pixel for pixel.
TEST(Screenshot, RefusesAnyOtherOutputSize) {
    EXPECT_EQ(render_screenshot(Canvas(1280, 720).renderer, (scratch() / "big.bmp").c_str()), 0);
    EXPECT_STREQ(SDL_GetError(), "screenshot output must be exactly 640x360 (got 1280x720)");
    EXPECT_FALSE(fs::exists(scratch() / "big.bmp"));
}

std::string slurp(const fs::path& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The real program taking one screenshot in `home`, its data folder; what it
// prints lands in home/out and home/err.
int run_talven(const fs::path& home, const fs::path& shot, const char* more = "") {
    const std::string cmd = "cd '" + home.string() + "' && XDG_DATA_HOME='" + home.string() +
                            "' SDL_VIDEODRIVER=dummy '" TALVEN_EXE "' --screenshot '" + shot.string() + "' " + more +
                            " >out 2>err";
    const int status = std::system(cmd.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ScreenshotRun, WritesThePlayViewOrSaysWhyNot) {
    const fs::path home = scratch() / "run", shot = home / "debug.bmp", lost = home / "no" / "shot.bmp";
    fs::create_directories(home);
    EXPECT_EQ(run_talven(home, shot, "--debug-game"), 0) << slurp(home / "err");
    EXPECT_EQ(slurp(home / "out"), "screenshot: " + shot.string() + "\n");
    const std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> bmp(SDL_LoadBMP(shot.c_str()), SDL_FreeSurface);
    ASSERT_NE(bmp, nullptr) << SDL_GetError();
    EXPECT_EQ(std::tuple(bmp->w, bmp->h, bmp->format->BitsPerPixel), std::tuple(640, 360, Uint8{32}));
    for (const auto& entry : fs::recursive_directory_iterator(home)) EXPECT_NE(entry.path().extension(), ".tvw");

    EXPECT_EQ(run_talven(home, lost), 1);
    EXPECT_EQ(slurp(home / "out"), "");
    EXPECT_EQ(slurp(home / "err"), "screenshot failed: Couldn't open " + lost.string() + "\n");
    EXPECT_FALSE(fs::exists(home / "no"));
}

}  // namespace
