// A long scripted session on a fixed seed: walking, jumping, tunnelling, building
// and sword fighting from late afternoon through a whole night. The world must
// stay consistent after every frame, and the same start must give the same end.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "core/inventory.h"
#include "core/tiles.h"
#include "sim/sim_fixtures.h"
#include "sim/update.h"

namespace {

using fixtures::STEP;

constexpr std::uint32_t SEED = 0x7A1E5u;
constexpr int STEPS = 7200;  // two minutes of play
constexpr int PHASE = 600;   // the script repeats every ten seconds

enum Hotbar : std::uint32_t { PICK = 0, SWORD = 1, DIRT = 2, IRON_PICK = 5 };

struct Tally {
    int mined = 0, placed = 0, strikes = 0, hurts = 0, spawns = 0, jumps = 0, respawns = 0;
    bool saw_night = false;
};

int col_of(float px) { return static_cast<int>(std::floor(px / 16.0f)); }

const Creature* nearest_creature(const Game& g) {
    const Creature* best = nullptr;
    float best_d = 0.0f;
    for (const Creature& c : g.creatures) {
        if (!c.alive) continue;
        const float d = std::fabs(c.x - g.player.x) + std::fabs(c.y - g.player.y);
        if (best == nullptr || d < best_d) {
            best = &c;
            best_d = d;
        }
    }
    return best;
}

void aim(const Game& g, FrameInput& in, int tx, int ty) {
    in.mouse_x = static_cast<int>(static_cast<float>(tx * 16 + 8) - g.camera_x);
    in.mouse_y = static_cast<int>(static_cast<float>(ty * 16 + 8) - g.camera_y);
}

// What the player does on frame `step`: a pure function of the step and the record.
FrameInput script(Game& g, int step, std::uint8_t jump_was_held) {
    FrameInput in{};
    const Player& p = g.player;
    const int t = step % PHASE;
    const int cycle = step / PHASE;
    const int pc = col_of(p.x + 6.0f);
    const int head = col_of(p.y);
    const int feet = col_of(p.y + 25.0f);
    const int ahead = p.facing;
    const bool rightwards = cycle % 2 == 0;

    if (t < 120) {  // run with a jump now and then
        inventory_activate(&g.player, PICK);
        (rightwards ? in.right : in.left) = 1;
        in.jump_held = (t % 45) < 20;
    } else if (t < 300) {  // tunnel ahead, then dig down
        inventory_activate(&g.player, cycle % 3 == 0 ? PICK : IRON_PICK);
        (rightwards ? in.right : in.left) = t % 3 == 0;
        in.use_held = 1;
        if (t < 200) aim(g, in, pc + ahead, (t / 30) % 2 ? head : feet);
        else aim(g, in, pc, feet + 1);
        in.jump_held = t % 60 == 59;
    } else if (t < 380) {  // build: a step ahead, a wall behind, a pillar to climb
        inventory_activate(&g.player, DIRT);
        static const int offsets[][2] = {{2, 0}, {2, -1}, {-2, 0}, {-2, -1}, {1, 1}, {3, 0}, {0, 2}};
        const int* o = offsets[(t / 12) % 7];
        aim(g, in, pc + o[0] * ahead, feet + o[1]);
        in.place = t % 12 == 0;
        in.jump_held = t % 50 < 15;
        (rightwards ? in.right : in.left) = t % 50 < 15;
    } else {  // fight whatever is nearest, or swing at the air ahead
        inventory_activate(&g.player, SWORD);
        const Creature* c = nearest_creature(g);
        if (c != nullptr) {
            aim(g, in, col_of(c->x + 7.0f), col_of(c->y + 7.0f));
            (c->x < p.x ? in.left : in.right) = std::fabs(c->x - p.x) > 20.0f;
            in.jump_held = c->y + 8.0f < p.y || t % 70 < 10;
        } else {
            aim(g, in, pc + 3 * ahead, head);
            (rightwards ? in.left : in.right) = t % 4 == 0;
        }
        in.use_held = 1;
    }
    in.jump_pressed = in.jump_held && !jump_was_held;
    return in;
}

bool finite_all(std::initializer_list<float> values) {
    for (float v : values)
        if (!std::isfinite(v)) return false;
    return true;
}

bool slots_consistent(const Player& p) {
    for (const InventorySlot& s : p.inventory) {
        if (s.item == 0 && s.count != 0) return false;
        if (s.item != 0 && (!item_known(s.item) || s.count < 1 || s.count > STACK_MAX)) return false;
    }
    return true;
}

bool tiles_known(const Game& g) {
    std::uint8_t worst = 0;
    for (std::uint8_t t : g.tiles) worst = t > worst ? t : worst;
    return worst <= TILE_MAX;
}

// Everything a consistent world promises; reports the first broken promise.
::testing::AssertionResult consistent(const Game& g) {
    const Player& p = g.player;
    if (!finite_all({p.x, p.y, p.vx, p.vy, p.hurt_timer, p.attack_cooldown, p.mine_progress, g.camera_x,
                     g.camera_y, g.time_of_day, g.creature_spawn_timer, g.autosave_timer, g.notice_timer}))
        return ::testing::AssertionFailure() << "player, camera or clock not finite";
    if (p.x < 0.0f || p.x + 12.0f > 8192.01f || p.y < 0.0f || p.y + 26.0f > 2560.01f)
        return ::testing::AssertionFailure() << "player outside the world at " << p.x << ", " << p.y;
    if (p.hp < 1 || p.hp > p.max_hp) return ::testing::AssertionFailure() << "hp " << p.hp;
    if (p.selected > 9) return ::testing::AssertionFailure() << "selected " << p.selected;
    if (!slots_consistent(p)) return ::testing::AssertionFailure() << "inventory slot broken";
    if (!(g.time_of_day >= 0.0f && g.time_of_day < 1.0f)) return ::testing::AssertionFailure() << "time of day";
    if (g.camera_x < 0.0f || g.camera_x > 7552.0f || g.camera_y < 0.0f || g.camera_y > 2200.0f)
        return ::testing::AssertionFailure() << "camera " << g.camera_x << ", " << g.camera_y;
    for (const Creature& c : g.creatures) {
        if (!c.alive) continue;
        if (!finite_all({c.x, c.y, c.vx, c.vy, c.hit_cooldown, c.flash}))
            return ::testing::AssertionFailure() << "creature not finite";
        if (c.x < 0.0f || c.x + 14.0f > 8192.01f || c.y < 0.0f || c.y + 14.0f > 2560.01f)
            return ::testing::AssertionFailure() << "creature outside the world at " << c.x << ", " << c.y;
        if (c.hp < 1 || c.hp > 7 || (c.kind != 0 && c.kind != 1)) return ::testing::AssertionFailure() << "creature hp/kind";
    }
    for (const Drop& d : g.drops) {
        if (!d.active) continue;
        if (!finite_all({d.x, d.y, d.vx, d.vy, d.lifetime})) return ::testing::AssertionFailure() << "drop not finite";
        if (d.x < 0.0f || d.x + 8.0f > 8192.01f || d.y < 0.0f || d.y + 8.0f > 2560.01f)
            return ::testing::AssertionFailure() << "drop outside the world";
        if (d.count != 1 || !item_known(d.item) || d.lifetime > 40.0f) return ::testing::AssertionFailure() << "drop record";
    }
    if (std::memchr(g.notice, '\0', sizeof g.notice) == nullptr) return ::testing::AssertionFailure() << "notice unterminated";
    if (!tiles_known(g)) return ::testing::AssertionFailure() << "tile id above 16";
    return ::testing::AssertionSuccess();
}

std::unique_ptr<Game> start() {
    auto game = fixtures::new_world(SEED);
    Game& g = *game;
    g.time_of_day = 0.45f;  // late afternoon: night falls after about 24 s
    g.player.inventory[SWORD] = InventorySlot{ITEM_IRON_SWORD, 1};
    g.player.inventory[DIRT] = InventorySlot{TILE_DIRT, 400};
    g.player.inventory[IRON_PICK] = InventorySlot{ITEM_IRON_PICK, 1};
    return game;
}

int alive_creatures(const Game& g) {
    int n = 0;
    for (const Creature& c : g.creatures) n += c.alive;
    return n;
}

// Runs steps [from, to) of the script, checking the world after every one.
void play(Game& g, int from, int to, Tally& tally) {
    std::uint8_t jump_was_held = 0;
    for (int step = from; step < to; ++step) {
        const FrameInput in = script(g, step, jump_was_held);
        jump_was_held = in.jump_held;
        const int tx = static_cast<int>(std::floor((g.camera_x + static_cast<float>(in.mouse_x)) / 16.0f));
        const int ty = static_cast<int>(std::floor((g.camera_y + static_cast<float>(in.mouse_y)) / 16.0f));
        const std::uint8_t before = in_grid(tx, ty) ? tile_at(g, tx, ty) : 0;
        const int alive_before = alive_creatures(g);
        const float cooldown_before = g.player.attack_cooldown;
        const std::uint8_t grounded_before = g.player.on_ground;
        const char notice_before = g.notice[4];

        game_update(&g, &in, STEP);

        ASSERT_TRUE(consistent(g)) << "after step " << step;
        const std::uint8_t after = in_grid(tx, ty) ? tile_at(g, tx, ty) : 0;
        tally.mined += before != TILE_EMPTY && after == TILE_EMPTY;
        tally.placed += before == TILE_EMPTY && after != TILE_EMPTY;
        tally.strikes += cooldown_before <= 0.0f && g.player.attack_cooldown > 0.2f;
        tally.hurts += g.player.hurt_timer == 1.0f;
        tally.spawns += alive_creatures(g) > alive_before;
        tally.jumps += in.jump_pressed && grounded_before;
        tally.respawns += std::strcmp(g.notice, "THE GLIMWICK BRINGS YOU BACK") == 0 && notice_before != 'G';
        tally.saw_night = tally.saw_night || (g.time_of_day > 0.55f && g.time_of_day < 0.92f);
    }
}

}  // namespace

TEST(DeterministicPlay, LongScriptedSessionStaysConsistentAndReplaysExactly) {
    auto first = start();
    Tally tally;
    play(*first, 0, STEPS, tally);
    if (HasFatalFailure()) return;

    // The script really did all of it.
    EXPECT_GE(tally.mined, 30);
    EXPECT_GE(tally.placed, 10);
    EXPECT_GE(tally.strikes, 5);
    EXPECT_GE(tally.hurts, 1);
    EXPECT_GE(tally.spawns, 10);
    EXPECT_GE(tally.jumps, 20);
    EXPECT_GE(tally.respawns, 1);
    EXPECT_TRUE(tally.saw_night);
    EXPECT_GT(first->time_of_day, 0.92f);
    EXPECT_EQ(first->tick, static_cast<std::uint64_t>(STEPS));

    auto second = start();
    Tally again;
    play(*second, 0, STEPS, again);
    EXPECT_EQ(std::memcmp(first.get(), second.get(), sizeof(Game)), 0);
}

TEST(DeterministicPlay, ACopyTakenMidwayContinuesIdentically) {
    // Everything the simulation depends on lives in the record: nothing hidden.
    auto original = start();
    Tally tally;
    play(*original, 0, 3000, tally);
    auto copy = std::make_unique<Game>();
    std::memcpy(copy.get(), original.get(), sizeof(Game));
    play(*original, 3000, 4200, tally);
    play(*copy, 3000, 4200, tally);
    EXPECT_EQ(std::memcmp(original.get(), copy.get(), sizeof(Game)), 0);
}
