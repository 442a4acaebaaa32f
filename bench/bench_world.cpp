// World generation speed: one full 512 x 160 world per iteration.
#include <benchmark/benchmark.h>

#include <memory>

#include "core/game.h"
#include "world/world_gen.h"

static void BM_WorldGenerate(benchmark::State& state) {
    auto game = std::make_unique<Game>();
    std::uint32_t seed = 1;
    for (auto _ : state) {
        world_generate(game.get(), seed++, "BENCH");
        benchmark::DoNotOptimize(game->tiles[0]);
    }
}
BENCHMARK(BM_WorldGenerate)->Unit(benchmark::kMicrosecond);
