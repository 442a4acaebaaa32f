// Screenshots, in process on software canvases and through the real program.
#include "render/screenshot.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "render/render_support.h"

namespace {

namespace fs = std::filesystem;

// The file's size and depth, and its pixels as 0xRRGGBB.
struct Bmp {
    int w = 0, h = 0, bits = 0;
    SDL_Surface* argb = nullptr;
    explicit Bmp(const fs::path& path) {
        SDL_Surface* raw = SDL_LoadBMP(path.c_str());
        if (raw == nullptr) return;
        w = raw->w;
        h = raw->h;
        bits = raw->format->BitsPerPixel;
        argb = SDL_ConvertSurfaceFormat(raw, SDL_PIXELFORMAT_ARGB8888, 0);
        SDL_FreeSurface(raw);
    }
    ~Bmp() { SDL_FreeSurface(argb); }
    std::uint32_t at(int x, int y) const {
        return static_cast<const std::uint32_t*>(argb->pixels)[y * argb->pitch / 4 + x] & 0xFFFFFFu;
    }
};

// Only an exact output size is written, so screenshots compare pixel for pixel.
TEST(Screenshot, RefusesAnyOtherOutputSize) {
    const fs::path path = scratch_home() / "big.bmp";
    Canvas big(1280, 720);
    EXPECT_EQ(render_screenshot(big.renderer, path.c_str()), 0);
    EXPECT_STREQ(SDL_GetError(), "screenshot output must be exactly 640x360 (got 1280x720)");
    EXPECT_FALSE(fs::exists(path));
}

std::string slurp(const fs::path& path) {
    std::stringstream s;
    s << std::ifstream(path).rdbuf();
    return s.str();
}

struct ProgramRun {
    int exit_code;
    std::string out, err;
};

// The real program, with its data folder in scratch space.
ProgramRun run_talven(const fs::path& home, const std::string& args) {
    fs::create_directories(home);
    const std::string cmd = "XDG_DATA_HOME='" + home.string() + "' SDL_VIDEODRIVER=dummy '" TALVEN_EXE "' " + args +
                            " >'" + (home / "out").string() + "' 2>'" + (home / "err").string() + "'";
    const int status = std::system(cmd.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, slurp(home / "out"), slurp(home / "err")};
}

TEST(ScreenshotRun, DebugWorldShotIsThePlayViewAndSavesNothing) {
    const fs::path home = scratch_home() / "run";
    const fs::path shot = home / "debug.bmp";
    const ProgramRun run = run_talven(home, "--screenshot '" + shot.string() + "' --debug-game");
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(run.out, "screenshot: " + shot.string() + "\n");
    const Bmp bmp(shot);
    ASSERT_EQ(bmp.w, 640);
    ASSERT_EQ(bmp.h, 360);
    EXPECT_EQ(bmp.bits, 32);
    EXPECT_EQ(bmp.at(150, 330), rgb(255, 222, 95));  // the selected hotbar slot
    EXPECT_EQ(bmp.at(14, 15), rgb(224, 67, 83));     // a full heart
    for (const auto& entry : fs::recursive_directory_iterator(home)) EXPECT_NE(entry.path().extension(), ".tvw");
}

TEST(ScreenshotRun, MissingFolderFailsWithSdlsReason) {
    const fs::path home = scratch_home() / "run_missing";
    const fs::path shot = home / "no" / "such" / "shot.bmp";
    const ProgramRun run = run_talven(home, "--screenshot '" + shot.string() + "'");
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "screenshot failed: Couldn't open " + shot.string() + "\n");
    EXPECT_FALSE(fs::exists(home / "no"));
}

}  // namespace
