// A long scripted session on a fixed seed: walking, jumping, tunnelling, building
// and sword fighting from late afternoon through a whole night. The world must
// stay consistent after every frame, and the same start must give the same end.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "core/inventory.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::inside_world, fixtures::point_at;

constexpr int STEPS = 7200;  // two minutes of play
constexpr int PHASE = 600;   // the script repeats every ten seconds
enum Hotbar : std::uint32_t { PICK = 0, SWORD = 1, DIRT = 2, IRON_PICK = 5 };

int cell(float px) { return static_cast<int>(std::floor(px / 16.0f)); }

// What the player does on frame `step`: a pure function of the step and the record.
FrameInput script(Game& g, int step, std::uint8_t jump_was_held) {
    FrameInput in{};
    const Player& p = g.player;
    const int t = step % PHASE, cycle = step / PHASE;
    const int pc = cell(p.x + 6.0f), head = cell(p.y), feet = cell(p.y + 25.0f), ahead = p.facing;
    std::uint8_t& forward = cycle % 2 == 0 ? in.right : in.left;
    const Hotbar pick = cycle % 3 == 0 ? PICK : IRON_PICK;
    inventory_activate(&g.player, t < 120 ? PICK : t < 300 ? pick : t < 380 ? DIRT : SWORD);
    in.use_held = t >= 120 && (t < 300 || t >= 380);
    if (t < 120) {  // run with a jump now and then
        forward = 1;
        in.jump_held = (t % 45) < 20;
    } else if (t < 300) {  // tunnel ahead, then dig down
        forward = t % 3 == 0;
        point_at(g, in, t < 200 ? pc + ahead : pc, t >= 200 ? feet + 1 : (t / 30) % 2 ? head : feet);
        in.jump_held = t % 60 == 59;
    } else if (t < 380) {  // build: a step ahead, a wall behind, a pillar to climb
        static const int offsets[][2] = {{2, 0}, {2, -1}, {-2, 0}, {-2, -1}, {1, 1}, {3, 0}, {0, 2}};
        const int* o = offsets[(t / 6) % 7];
        point_at(g, in, pc + o[0] * ahead, feet + o[1]);
        in.place = t % 6 == 0;
        in.jump_held = forward = t % 50 < 15;
    } else {  // fight the nearest creature, or swing at the air ahead
        const Creature* c = nullptr;  // the nearest one along the ground
        for (const Creature& e : g.creatures)
            if (e.alive && (!c || std::fabs(e.x - p.x) < std::fabs(c->x - p.x))) c = &e;
        const float cx = c ? c->x : p.x + 48.0f * static_cast<float>(ahead), cy = c ? c->y : p.y;
        point_at(g, in, cell(cx + 7.0f), cell(cy + 7.0f));
        (cx < p.x ? in.left : in.right) = std::fabs(cx - p.x) > 20.0f && (c || t % 4 == 0);
        in.jump_held = cy + 8.0f < p.y || t % 70 < 10;
    }
    in.jump_pressed = in.jump_held && !jump_was_held;
    return in;
}

// The first promise of a consistent world that `g` breaks, or null.
const char* broken_promise(const Game& g) {
    const Player& p = g.player;
    if (!inside_world(p.x, p.y, 12.0f, 26.0f) || !std::isfinite(p.vx + p.vy + p.attack_cooldown + p.mine_progress))
        return "player position or speed";
    if (p.hp < 1 || p.hp > p.max_hp || p.selected > 9) return "player hp or selection";
    for (const InventorySlot& s : p.inventory)
        if (s.item == 0 ? s.count != 0 : !item_known(s.item) || s.count < 1 || s.count > STACK_MAX) return "slot";
    for (const Creature& c : g.creatures)
        if (c.alive && (!inside_world(c.x, c.y, 14.0f, 14.0f) || !std::isfinite(c.vx + c.vy) || c.hp < 1 || c.hp > 7))
            return "creature";
    for (std::uint8_t t : g.tiles) if (t > TILE_MAX) return "tile id above 16";
    return nullptr;
}

// What the script got done: tiles mined, blocks placed, strikes, jumps, hurts.
using Tally = std::array<int, 5>;

// Runs the whole script on a fresh world, checking the world after every step.
std::unique_ptr<Game> play(Tally& done) {
    auto game = fixtures::new_world(0x7A1E5u);
    Game& g = *game;
    g.time_of_day = 0.45f;  // late afternoon: night falls after about 24 s
    g.player.inventory[SWORD] = InventorySlot{ITEM_IRON_SWORD, 1};
    g.player.inventory[DIRT] = InventorySlot{TILE_DIRT, 400};
    g.player.inventory[IRON_PICK] = InventorySlot{ITEM_IRON_PICK, 1};
    FrameInput in{};
    for (int step = 0; step < STEPS; ++step) {
        in = script(g, step, in.jump_held);
        const int tx = cell(g.camera_x + static_cast<float>(in.mouse_x));
        const int ty = cell(g.camera_y + static_cast<float>(in.mouse_y));
        const int was_solid = in_grid(tx, ty) ? tile_at(g, tx, ty) != TILE_EMPTY : -1;
        const bool could_strike = g.player.attack_cooldown <= 0.0f;
        const bool could_jump = in.jump_pressed && g.player.on_ground;
        game_update(&g, &in, fixtures::STEP);
        const char* broken = broken_promise(g);
        EXPECT_EQ(broken, nullptr) << broken << " after step " << step;
        if (broken) break;
        const int is_solid = in_grid(tx, ty) ? tile_at(g, tx, ty) != TILE_EMPTY : -1;
        const Tally counts = {was_solid == 1 && is_solid == 0, was_solid == 0 && is_solid == 1,
                              could_strike && g.player.attack_cooldown > 0.2f, could_jump,
                              g.player.hurt_timer == 1.0f};
        for (std::size_t i = 0; i < done.size(); ++i) done[i] += counts[i];
    }
    return game;
}

}  // namespace

TEST(DeterministicPlay, TwoMinutesOfScriptedPlayStayConsistentAndReplayExactly) {
    Tally done{}, again{};
    const auto first = play(done);
    // A floor on what the script gets done, so a broken action cannot pass unseen.
    // Whether the player dies in the night depends on every rule, so it is not asked.
    const Tally least = {30, 10, 5, 20, 1};
    const char* names[] = {"tiles mined", "blocks placed", "strikes", "jumps", "hurts"};
    for (std::size_t i = 0; i < done.size(); ++i) EXPECT_GE(done[i], least[i]) << names[i];
    EXPECT_TRUE(first->time_of_day > 0.92f && first->tick == STEPS);  // through the whole night
    EXPECT_TRUE(fixtures::same(*first, *play(again)));
}
