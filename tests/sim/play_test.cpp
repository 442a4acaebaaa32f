// A scripted session on a fixed seed from late afternoon through a night into the
// next morning: crafting at a workbench, running, tunnelling, building, sword
// fighting, dying and coming back. Digests of the whole record at checkpoints pin
// every rule of the frame step; a record copied at a checkpoint must replay alike.

#include <cmath>
#include <utility>

#include "core/crafting.h"
#include "core/game_digest.h"
#include "core/inventory.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::point_at;

constexpr int CHECKPOINT = 1200;  // 20 s
constexpr int CHECKPOINTS = 8;    // 160 s: 0.45 of a day to 0.12 of the next
constexpr int PHASE = 600;        // the script repeats every ten seconds

int cell(float px) { return static_cast<int>(std::floor(px / 16.0f)); }

// Selects the first hotbar slot holding `item`, else the last one.
void take(Game& g, std::uint16_t item) {
    std::uint32_t slot = HOTBAR_SLOTS - 1;
    while (slot > 0 && g.player.inventory[slot].item != item) --slot;
    inventory_activate(&g.player, g.player.inventory[slot].item == item ? slot : HOTBAR_SLOTS - 1);
}

const Creature* nearest_creature(const Game& g) {
    const Creature* c = nullptr;
    for (const Creature& e : g.creatures)
        if (e.alive && (!c || std::fabs(e.x - g.player.x) < std::fabs(c->x - g.player.x))) c = &e;
    return c;
}

// What the player does on frame `step`: a pure function of the step and the record.
FrameInput script(Game& g, int step) {
    FrameInput in{};
    const Player& p = g.player;
    const int t = step % PHASE, cycle = step / PHASE;
    const int pc = cell(p.x + 6.0f), head = cell(p.y), feet = cell(p.y + 25.0f), ahead = p.facing;
    std::uint8_t& forward = cycle % 2 == 0 ? in.right : in.left;
    if (step < 40) {  // a workbench from wood, set down beside the player, then an iron pick at it
        if (step == 0) craft_recipe(&g, 3);
        take(g, TILE_WORKBENCH);
        point_at(g, in, pc + 1 + step / 8, feet);
        in.place = step % 4 == 0;
        if (step == 39) craft_recipe(&g, 4);
    } else if (t < 120) {  // run with a jump now and then
        take(g, ITEM_WORN_PICK);
        forward = 1;
        in.jump_held = (t % 45) < 20;
    } else if (t < 300) {  // tunnel ahead, then dig down
        take(g, cycle % 3 == 0 ? ITEM_WORN_PICK : ITEM_IRON_PICK);
        forward = t % 3 == 0;
        const bool down = t >= 200 && cycle % 3 == 1;
        point_at(g, in, down ? pc : pc + ahead, down ? feet + 1 : t >= 200 ? head - 1 : (t / 30) % 2 ? head : feet);
        in.use_held = 1;
        in.jump_held = t % 60 == 59;
    } else if (t < 380) {  // build: a step ahead, a wall behind, a pillar to climb
        static const int offsets[][2] = {{2, 0}, {2, -1}, {-2, 0}, {-2, -1}, {1, 1}, {3, 0}, {0, 2}};
        const int* o = offsets[(t / 6) % 7];
        take(g, cycle % 4 == 3 ? TILE_TORCH : TILE_DIRT);
        point_at(g, in, pc + o[0] * ahead, feet + o[1]);
        in.place = t % 6 == 0;
        in.jump_held = forward = t % 50 < 15;
    } else if (cycle % 4 == 2) {  // stand and take the blows
    } else {  // fight the nearest creature, or swing at the air ahead
        take(g, cycle % 2 ? ITEM_IRON_SWORD : ITEM_SHORT_SWORD);
        const Creature* c = nearest_creature(g);
        const float cx = c ? c->x : p.x + 48.0f * static_cast<float>(ahead), cy = c ? c->y : p.y;
        point_at(g, in, cell(cx + 7.0f), cell(cy + 7.0f));
        in.use_held = 1;
        (cx < p.x ? in.left : in.right) = std::fabs(cx - p.x) > 20.0f && (c || t % 4 == 0);
        in.jump_held = cy + 8.0f < p.y || t % 70 < 10;
    }
    in.jump_pressed = in.jump_held && step % 6 == 0;
    return in;
}

std::string summary(const Game& g) {
    int creatures = 0, drops = 0;
    for (const Creature& c : g.creatures) creatures += c.alive;
    for (const Drop& d : g.drops) drops += d.active;
    char s[200];
    std::snprintf(s, sizeof s, "digest 0x%08X tick %llu day %u time %.4f player (%.2f, %.2f) hp %d, %d creatures, %d drops",
                  game_digest(&g), static_cast<unsigned long long>(g.tick), g.day, static_cast<double>(g.time_of_day),
                  static_cast<double>(g.player.x), static_cast<double>(g.player.y), g.player.hp, creatures, drops);
    return s;
}

// What the script got done, counted frame by frame.
struct Tally {
    int mined = 0, placed = 0, kills = 0, hurts = 0, deaths = 0;
};

void play(Game& g, int from, int to, Tally& done) {
    for (int step = from; step < to; ++step) {
        const FrameInput in = script(g, step);
        const int tx = cell(g.camera_x + static_cast<float>(in.mouse_x));
        const int ty = cell(g.camera_y + static_cast<float>(in.mouse_y));
        const int was = in_grid(tx, ty) ? tile_at(g, tx, ty) : -1;
        const std::int32_t hp = g.player.hp;
        std::uint8_t alive[MAX_CREATURES];
        for (int i = 0; i < MAX_CREATURES; ++i) alive[i] = g.creatures[i].alive;
        game_update(&g, &in, fixtures::STEP);
        const int is = in_grid(tx, ty) ? tile_at(g, tx, ty) : -1;
        for (int i = 0; i < MAX_CREATURES; ++i) done.kills += alive[i] && g.creatures[i].hp <= 0;
        done.mined += was > 0 && is == 0;
        done.placed += was == 0 && is > 0;
        done.hurts += g.player.hp < hp;
        done.deaths += g.player.hp > hp;  // nothing else heals
    }
}

std::unique_ptr<Game> start() {
    auto game = fixtures::new_world(0x7A1E5u);
    Game& g = *game;
    g.time_of_day = 0.45f;  // late afternoon: night falls after 24 s
    // On top of the starting kit, so that the kit's counts still show in the digests.
    for (const auto& [item, n] : {std::pair{TILE_DIRT, 340}, {TILE_WOOD, 2}, {TILE_IRON_ORE, 8}})
        inventory_add(&g.player, item, n);
    inventory_add(&g.player, ITEM_IRON_SWORD, 1);
    return game;
}

}  // namespace

TEST(DeterministicPlay, ScriptedDayAndNightMatchFrozenDigestsAndReplayFromEveryCheckpoint) {
    const std::uint32_t frozen[CHECKPOINTS + 1] = {0xF022B3FCu, 0x0D246BACu, 0x98A90DA3u, 0x989C3352u, 0x71947FBFu,
                                                   0xCA231728u, 0x730B6DFCu, 0x65B415A8u, 0x6397B7E3u};
    auto fresh = std::make_unique<Game>();
    std::memset(fresh.get(), 0xAB, sizeof(Game));  // a new world owes nothing to what the record held
    game_new(fresh.get(), 0x7A1E5u, "FIXTURE");
    EXPECT_EQ(0xC9C9A2C5u, game_digest(fresh.get())) << summary(*fresh);
    std::unique_ptr<Game> at[CHECKPOINTS + 1];
    std::uint32_t seen[CHECKPOINTS + 1];
    Tally done, again;
    auto game = start();
    bool differs = false;  // only the first checkpoint that differs is worth reading
    for (int k = 0; k <= CHECKPOINTS; ++k) {
        if (k > 0) play(*game, (k - 1) * CHECKPOINT, k * CHECKPOINT, done);
        at[k] = fixtures::copy_of(*game);
        seen[k] = game_digest(game.get());
        if (differs || frozen[k] == seen[k]) continue;
        differs = true;
        ADD_FAILURE() << "checkpoint " << k << " is the first to differ from 0x" << std::hex << frozen[k] << ": "
                      << summary(*game);
    }
    // The story the digests stand for; it still runs when a digest differs, to say what changed.
    EXPECT_EQ(1u, inventory_count(&at[1]->player, ITEM_IRON_PICK));
    EXPECT_GE(done.mined, 40);
    EXPECT_GE(done.placed, 40);
    EXPECT_GE(done.kills, 10);
    EXPECT_GE(done.hurts, 15);
    EXPECT_EQ(2, done.deaths);
    EXPECT_EQ(2u, game->day);
    // Anything the step keeps outside the record would make a restart go astray.
    for (int k = 0; k < CHECKPOINTS; ++k) {
        play(*at[k], k * CHECKPOINT, (k + 1) * CHECKPOINT, again);
        EXPECT_EQ(seen[k + 1], game_digest(at[k].get())) << "replayed from checkpoint " << k << ": " << summary(*at[k]);
    }
}
