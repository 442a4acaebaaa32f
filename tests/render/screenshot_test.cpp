// Screenshots: in process on software canvases, and through the real program.
#include "render/screenshot.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "render/render_support.h"

namespace {

namespace fs = std::filesystem;

struct Bmp {
    int w = 0, h = 0, bits = 0;
    std::uint32_t pixel_at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * w + x)); }
    std::vector<std::uint32_t> pixels;  // 0xRRGGBB
};

Bmp load_bmp(const fs::path& path) {
    Bmp out;
    SDL_Surface* raw = SDL_LoadBMP(path.c_str());
    if (raw == nullptr) return out;
    out.bits = raw->format->BitsPerPixel;
    SDL_Surface* argb = SDL_ConvertSurfaceFormat(raw, SDL_PIXELFORMAT_ARGB8888, 0);
    out.w = argb->w;
    out.h = argb->h;
    for (int y = 0; y < argb->h; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(static_cast<const std::uint8_t*>(argb->pixels) +
                                                                  y * argb->pitch);
        for (int x = 0; x < argb->w; ++x) out.pixels.push_back(row[x] & 0xFFFFFFu);
    }
    SDL_FreeSurface(argb);
    SDL_FreeSurface(raw);
    return out;
}

std::string slurp(const fs::path& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(Screenshot, WritesTheFrameAs640x360With32BitPixels) {
    const fs::path path = scratch_home() / "frame.bmp";
    Canvas c;
    fill(c.renderer, 10, 20, 5, 5, rgba(200, 100, 50));
    ASSERT_EQ(render_screenshot(c.renderer, path.c_str()), 1) << SDL_GetError();
    const Bmp bmp = load_bmp(path);
    EXPECT_EQ(bmp.w, 640);
    EXPECT_EQ(bmp.h, 360);
    EXPECT_EQ(bmp.bits, 32);
    EXPECT_EQ(bmp.pixel_at(12, 22), rgb(200, 100, 50));
    EXPECT_EQ(bmp.pixel_at(9, 22), 0u);
}

TEST(Screenshot, RefusesAnyOtherOutputSize) {
    const fs::path path = scratch_home() / "big.bmp";
    Canvas c(1280, 720);
    EXPECT_EQ(render_screenshot(c.renderer, path.c_str()), 0);
    EXPECT_STREQ(SDL_GetError(), "screenshot output must be exactly 640x360 (got 1280x720)");
    EXPECT_FALSE(fs::exists(path));
}

TEST(Screenshot, MissingFolderFailsAndLeavesNothing) {
    const fs::path dir = scratch_home() / "missing";
    Canvas c;
    EXPECT_EQ(render_screenshot(c.renderer, (dir / "shot.bmp").c_str()), 0);
    EXPECT_FALSE(fs::exists(dir));
}

struct ProgramRun {
    int exit_code;
    std::string out, err;
};

// The program with its data folder in scratch space, so no real save is touched.
ProgramRun run_talven(const fs::path& data_home, const std::string& args) {
    fs::create_directories(data_home);
    const fs::path out = data_home / "stdout.txt";
    const fs::path err = data_home / "stderr.txt";
    const std::string cmd = "XDG_DATA_HOME='" + data_home.string() + "' SDL_VIDEODRIVER=dummy '" TALVEN_EXE "' " +
                            args + " >'" + out.string() + "' 2>'" + err.string() + "'";
    const int status = std::system(cmd.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, slurp(out), slurp(err)};
}

bool holds_a_save(const fs::path& dir) {
    for (const auto& entry : fs::recursive_directory_iterator(dir))
        if (entry.path().extension() == ".tvw") return true;
    return false;
}

TEST(ScreenshotRun, DebugWorldShotIsThePlayViewAndSavesNothing) {
    const fs::path home = scratch_home() / "run";
    const fs::path shot = home / "debug.bmp";
    const ProgramRun run = run_talven(home, "--screenshot '" + shot.string() + "' --debug-game");
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(run.out, "screenshot: " + shot.string() + "\n");
    const Bmp bmp = load_bmp(shot);
    ASSERT_EQ(bmp.w, 640);
    ASSERT_EQ(bmp.h, 360);
    EXPECT_EQ(bmp.bits, 32);
    EXPECT_EQ(bmp.pixel_at(150, 330), rgb(255, 222, 95));  // the selected hotbar slot
    EXPECT_EQ(bmp.pixel_at(18 - 4, 15), rgb(224, 67, 83));  // a full heart
    EXPECT_FALSE(holds_a_save(home));
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
