// Frame update speed: one game_update of 1/60 s per iteration, on a crowded world
// (all 48 creatures and 64 drops alive around a player) and on a quiet one. The
// record is restored from its starting copy every few hundred steps, outside the
// timing, so the crowd never thins out by expiry or despawning.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "core/frame_input.h"
#include "core/game.h"
#include "core/tiles.h"
#include "sim/update.h"
#include "world/new_game.h"

namespace {

constexpr float STEP = 1.0f / 60.0f;
constexpr int RESTORE_EVERY = 600;
constexpr std::uint32_t SEED = 0x7A1E5u;

// A flat, walled strip around the spawn column: columns 200..312, rows 40..60,
// floor at row 61. The player respawns inside it, so nothing despawns.
void clear_strip(Game& g) {
    for (int r = 39; r <= 61; ++r)
        for (int c = 199; c <= 313; ++c)
            tile_at(g, c, r) = (r == 39 || r == 61 || c == 199 || c == 313) ? TILE_STONE : TILE_EMPTY;
    g.spawn_x = 256;
    g.spawn_y = 59;
    g.player.x = 256.0f * 16.0f + 2.0f;
    g.player.y = 61.0f * 16.0f - 26.0f;
}

std::unique_ptr<Game> quiet_world() {
    auto g = std::make_unique<Game>();
    game_new(g.get(), SEED, "BENCH");
    clear_strip(*g);
    g->autosave_off = 1;  // disk writes are not part of the frame cost measured here
    g->creature_spawn_timer = 1.0e9f;
    return g;
}

// Every creature and drop slot in use; the inventory is full, so drops stay.
std::unique_ptr<Game> crowded_world() {
    auto g = quiet_world();
    g->creature_spawn_timer = 0.0f;
    for (int i = 0; i < MAX_CREATURES; ++i) {
        Creature& c = g->creatures[i];
        c.x = static_cast<float>((208 + i * 2) * 16 + 1);
        c.y = static_cast<float>(40 + (i % 5) * 3) * 16.0f;
        c.kind = i % 2;
        c.hp = c.kind ? 7 : 5;
        c.dir = i % 3 ? 1 : -1;
        c.alive = 1;
    }
    for (int i = 0; i < MAX_DROPS; ++i) {
        Drop& d = g->drops[i];
        d.x = static_cast<float>((226 + i) * 16 + 4);
        d.y = static_cast<float>(45 + i % 10) * 16.0f;
        d.vx = static_cast<float>(i % 7) - 3.0f;
        d.item = TILE_DIRT;
        d.count = 1;
        d.lifetime = 40.0f;
        d.active = 1;
    }
    for (int s = 1; s < INVENTORY_SLOTS; ++s) g->player.inventory[s] = InventorySlot{TILE_STONE, 999};
    g->player.hp = 40;
    g->player.max_hp = 40;
    return g;
}

// Runs back and forth with the button held on the tile ahead.
FrameInput walking_input(const Game& g, int step) {
    FrameInput in{};
    const bool right = (step / 120) % 2 == 0;
    in.right = right;
    in.left = !right;
    in.use_held = 1;
    in.jump_held = step % 90 < 10;
    in.jump_pressed = step % 90 == 0;
    in.mouse_x = static_cast<int>(g.player.x + (right ? 24.0f : -12.0f) - g.camera_x);
    in.mouse_y = static_cast<int>(g.player.y + 20.0f - g.camera_y);
    return in;
}

int count_alive(const Game& g) {
    int n = 0;
    for (const Creature& c : g.creatures) n += c.alive;
    return n;
}

int count_active(const Game& g) {
    int n = 0;
    for (const Drop& d : g.drops) n += d.active;
    return n;
}

void run_frames(benchmark::State& state, std::unique_ptr<Game> (*make)(), bool walk) {
    const auto start = make();
    auto game = std::make_unique<Game>();
    std::memcpy(game.get(), start.get(), sizeof(Game));
    int step = 0;
    long creatures_seen = 0;
    long drops_seen = 0;
    long batches = 0;
    for (auto _ : state) {
        const FrameInput in = walk ? walking_input(*game, step) : FrameInput{};
        game_update(game.get(), &in, STEP);
        benchmark::DoNotOptimize(game->tick);
        if (++step == RESTORE_EVERY) {
            state.PauseTiming();
            creatures_seen += count_alive(*game);
            drops_seen += count_active(*game);
            ++batches;
            std::memcpy(game.get(), start.get(), sizeof(Game));
            step = 0;
            state.ResumeTiming();
        }
    }
    // How full the tables still were at the end of each batch.
    if (batches > 0) {
        state.counters["creatures_alive"] = static_cast<double>(creatures_seen) / static_cast<double>(batches);
        state.counters["drops_active"] = static_cast<double>(drops_seen) / static_cast<double>(batches);
    }
}

void BM_UpdateCrowded(benchmark::State& state) { run_frames(state, crowded_world, true); }
void BM_UpdateQuiet(benchmark::State& state) { run_frames(state, quiet_world, false); }
void BM_UpdateQuietWalking(benchmark::State& state) { run_frames(state, quiet_world, true); }

}  // namespace

BENCHMARK(BM_UpdateCrowded)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UpdateQuiet)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UpdateQuietWalking)->Unit(benchmark::kMicrosecond);
