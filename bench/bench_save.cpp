// Save and load speed. Saving is timed twice: on a memory-backed folder, where
// fsync costs next to nothing (the format and file work alone), and on the temp
// folder's disk, where the two fsyncs wait for the device.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "core/game.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

namespace fs = std::filesystem;

class BenchFolder {
public:
    explicit BenchFolder(const fs::path& parent) {
        std::string pattern = (parent / "talven-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) != nullptr) path_ = pattern;
    }
    ~BenchFolder() {
        std::error_code ec;
        if (!path_.empty()) fs::remove_all(path_, ec);
    }
    bool ok() const { return !path_.empty(); }
    std::string file(const char* name) const { return (path_ / name).string(); }

private:
    fs::path path_;
};

fs::path memory_folder() { return fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path(); }

std::unique_ptr<Game> bench_world() {
    auto game = std::make_unique<Game>();
    game_new(game.get(), 5010501u, "BENCH WORLD");
    return game;
}

void save_into(benchmark::State& state, const fs::path& parent) {
    const BenchFolder folder(parent);
    const auto game = bench_world();
    const std::string path = folder.file("world.tvw");
    if (!folder.ok()) state.SkipWithError("no scratch folder");
    for (auto _ : state) {
        if (!game_save(game.get(), path.c_str())) state.SkipWithError("save failed");
    }
}

void BM_GameSaveMemoryFolder(benchmark::State& state) { save_into(state, memory_folder()); }
void BM_GameSaveDiskFolder(benchmark::State& state) { save_into(state, fs::temp_directory_path()); }

void BM_GameLoad(benchmark::State& state) {
    const BenchFolder folder(memory_folder());
    const auto saved = bench_world();
    const std::string path = folder.file("world.tvw");
    if (!folder.ok() || !game_save(saved.get(), path.c_str())) state.SkipWithError("could not write the save");
    auto game = std::make_unique<Game>();
    for (auto _ : state) {
        if (!game_load(game.get(), path.c_str())) state.SkipWithError("load failed");
        benchmark::DoNotOptimize(game->tiles[0]);
    }
}

void BM_SaveChecksum(benchmark::State& state) {
    const auto game = bench_world();
    for (auto _ : state) benchmark::DoNotOptimize(save_checksum(game.get()));
}

}  // namespace

BENCHMARK(BM_GameSaveMemoryFolder)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GameSaveDiskFolder)->Unit(benchmark::kMicrosecond)->Iterations(200);
BENCHMARK(BM_GameLoad)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SaveChecksum)->Unit(benchmark::kMicrosecond);
