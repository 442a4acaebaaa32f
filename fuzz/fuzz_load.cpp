// libFuzzer target for the save loader: any bytes at all, as a save file.
// A refused file must leave the live record untouched; an accepted one must be
// a valid world that saves back to the very bytes it came from.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/game.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

Game live;
Game before;
int input_fd = -1;
char input_path[64];
char resave_dir[] = "/tmp/talven-fuzz-XXXXXX";
char resave_path[128];

void require(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "fuzz_load: %s\n", what);
    std::abort();
}

void set_up() {
    game_new(&live, 5010501u, "FUZZ WORLD");
    live.player.vx = 3.5f;
    live.creatures[0].alive = 1;
    std::memcpy(&before, &live, sizeof live);
    // The input lives in memory; the loader opens it through /proc like any path.
    input_fd = memfd_create("talven-fuzz-input", 0);
    require(input_fd >= 0, "memfd_create failed");
    std::snprintf(input_path, sizeof input_path, "/proc/self/fd/%d", input_fd);
    require(mkdtemp(resave_dir) != nullptr, "mkdtemp failed");
    std::snprintf(resave_path, sizeof resave_path, "%s/resave.tvw", resave_dir);
}

void put_input(const std::uint8_t* data, std::size_t size) {
    require(ftruncate(input_fd, 0) == 0, "ftruncate failed");
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = pwrite(input_fd, data + done, size - done, static_cast<off_t>(done));
        require(n > 0, "pwrite failed");
        done += static_cast<std::size_t>(n);
    }
}

// An accepted file saves back byte for byte, except the name's last byte,
// which the loader forces to NUL.
void check_resave(const std::uint8_t* data) {
    require(game_save(&live, resave_path), "re-save failed");
    static std::uint8_t out[SAVE_FILE_SIZE + 1];
    std::FILE* f = std::fopen(resave_path, "rb");
    require(f != nullptr, "re-saved file missing");
    const std::size_t n = std::fread(out, 1, sizeof out, f);
    std::fclose(f);
    std::remove(resave_path);
    require(n == SAVE_FILE_SIZE, "re-saved file has the wrong size");
    static std::uint8_t expected[SAVE_FILE_SIZE];
    std::memcpy(expected, data, SAVE_FILE_SIZE);
    expected[24 + NAME_SIZE - 1] = 0;
    require(std::memcmp(out, expected, SAVE_FILE_SIZE) == 0, "re-saved bytes differ from the input");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (input_fd < 0) set_up();
    put_input(data, size);
    if (!game_load(&live, input_path)) {
        require(std::memcmp(&live, &before, sizeof live) == 0, "refused load changed the live record");
        return 0;
    }
    require(size >= static_cast<std::size_t>(SAVE_FILE_SIZE), "accepted a short file");
    require(valid_loaded_game(&live), "accepted an invalid world");
    require(live.screen == SCREEN_PLAYING && live.world_open == 1 && live.running == 1, "run-time fields not set");
    require(live.creatures[0].alive == 0 && live.player.vx == 0.0f, "unsaved fields not reset");
    check_resave(data);
    std::memcpy(&live, &before, sizeof live);
    return 0;
}
