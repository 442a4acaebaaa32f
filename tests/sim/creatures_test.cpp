// Creatures: where new ones appear, what touching the player does, chasing and
// wandering, and sword strikes.
#include <array>
#include <cstring>
#include <set>

#include "sim/combat.h"
#include "sim/creatures.h"
#include "sim/sim_fixtures.h"

namespace {

// In the room the player's middle row is 100, so the spawn search covers rows
// 87..111.
using Creatures = fixtures::Room;

// A live creature at rest on the room's floor, its left side `dx` px right of the
// player's: kind 0 is small with 5 hp, kind 1 large with 7.
Creature& put(Game& g, int slot, float dx, std::int32_t kind = 0) {
    return g.creatures[slot] = Creature{g.player.x + dx, 1602.0f, 0.0f, 0.0f, kind ? 7 : 5, kind, 1, 0.0f, 0.0f, 1, 0};
}

}  // namespace

// Fourteen to twenty-two tiles to either side; near a world edge only columns
// 3..508 take one (refused, not mirrored). The rest of how a new creature
// starts out is pinned by the play test's digests.
TEST_F(Creatures, SpawnColumnsKeepClearOfTheWorldEdges) {
    fixtures::arena(g, 1, 80, 60, 100);  // standing room on row 99 beats any cave below
    fixtures::arena(g, 451, 80, 510, 100);
    std::set<int> columns, want = {3, 472, 473, 474, 475, 476, 477, 478, 479, 480, 508};
    for (int i = 31; i <= 39; ++i) want.insert(i);
    for (int col : {17, 494}) {
        fixtures::stand_player(g, col, 101);
        for (g.tick = 1; g.tick <= 300; ++g.tick) {
            g.creatures[0].alive = 0;
            if (!creatures_try_spawn(&g)) continue;
            const Creature& c = g.creatures[0];
            columns.insert(static_cast<int>(c.x) / 16);
            EXPECT_EQ(c.x < g.player.x ? 1 : -1, c.dir);  // drawn facing the player before its first step
        }
    }
    EXPECT_EQ(want, columns);
}

// The band never reaches below row 156: rows 157 and 158 are bedrock in every
// generated world, but a loaded one may differ.
TEST_F(Creatures, SpawnRowIsTheNearestStandingRoomInTheBandWithTheHigherWinningATie) {
    // Every column the same: solid but for two-cell pockets whose upper rows are
    // given, the player's middle row, then the row the spawned creature sits in
    // (-1: none spawns).
    const int bands[][4] = {{86, -1, 100, -1}, {87, -1, 100, 88}, {111, -1, 100, 112}, {112, -1, 100, -1},
                            {96, 102, 100, 97}, {94, 101, 100, 102}, {97, 100, 100, 101}, {157, -1, 150, -1}, {1, -1, 14, 2}};
    for (const auto& b : bands) {
        fixtures::fill_tiles(g, 100, 0, 160, 159, TILE_STONE);
        for (int k : {b[0], b[1]})
            if (k >= 0) fixtures::fill_tiles(g, 100, k, 160, k + 1, TILE_EMPTY);
        fixtures::put_player(g, 2082.0f, static_cast<float>(b[2] * 16 - 10));
        bool spawned = false;
        for (g.tick = 1; g.tick < 200 && !spawned; ++g.tick) spawned = creatures_try_spawn(&g);
        EXPECT_EQ(b[3], spawned ? static_cast<int>(g.creatures[0].y) / 16 : -1) << "pocket " << b[0];
        g.creatures[0].alive = 0;
    }
}

// With dt 0 nobody moves: only contact and the despawn distance act.
TEST_F(Creatures, ContactHurtsOnceEveryTouchingCreatureSpendsItsAttackAndPast1152PixelsOneIsGone) {
    const Creature& first = put(g, 0, 0.0f, 1);  // level with the player
    const Creature& second = put(g, 1, -5.0f, 0);
    const Creature& beside = put(g, 2, 12.0f);  // edges meeting is not contact, on either side
    const Creature& left = put(g, 3, -14.0f);
    const Creature& kept = put(g, 4, 1152.0f);
    const Creature& gone = put(g, 5, -1153.0f);
    Creature& above = put(g, 6, 0.0f);
    Creature& below = put(g, 7, 0.0f);
    Creature& bottom = put(g, 8, 40.0f);
    above.y = g.player.y - 14.0f;  // its bottom on the player's head
    below.y = g.player.y + 26.0f;  // its top on the player's feet
    bottom.y = 2560.0f;            // on the world's bottom edge: kept
    g.player.hp = 3;
    creatures_step(&g, 0.0f);
    EXPECT_EQ(1, g.player.hp) << "one hp left is still alive";
    EXPECT_EQ((std::array{1.0f, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f}),
              (std::array{first.hit_cooldown, second.hit_cooldown, beside.hit_cooldown, left.hit_cooldown,
                          above.hit_cooldown, below.hit_cooldown}));
    EXPECT_EQ(125.0f, g.player.vx);  // level counts as right of the first; the rest of a hit is in the play digests
    EXPECT_EQ((std::array{1, 0, 1}), (std::array<int, 3>{kept.alive, gone.alive, bottom.alive}));
    // A player still blinking from a hit, however briefly, takes no more.
    g.player.hurt_timer = 0.25f, g.creatures[0].hit_cooldown = 0.0f;
    creatures_step(&g, 0.0f);
    EXPECT_EQ(1, g.player.hp);
}

// With every slot taken nothing spawns and no record changes.
TEST_F(Creatures, AFullTableSpawnsNothing) {
    for (int i = 0; i < MAX_CREATURES; ++i) put(g, i, 300.0f);
    const auto before = fixtures::copy_of(g);
    EXPECT_EQ(false, creatures_try_spawn(&g));
    EXPECT_EQ(0, std::memcmp(before->creatures, g.creatures, sizeof g.creatures));
}

// Chasing starts inside 220 px and pushes towards the player, rightwards when
// level with them; out of range, a creature on the ground picks its 22 px/s
// wander up again only below 12 px/s.
TEST_F(Creatures, ChaseRangeAndWanderThresholds) {
    Creature& edge = put(g, 0, 220.0f);
    Creature& level = put(g, 1, 0.0f);
    Creature& slow = put(g, 2, 400.0f);
    edge.on_ground = slow.on_ground = 1, slow.vx = 12.0f;
    level.y = g.player.y - 40.0f;  // above the player, out of reach
    creatures_step(&g, fixtures::STEP);
    EXPECT_EQ((std::array{22.0f, 65.0f * fixtures::STEP, 12.0f}), (std::array{edge.vx, level.vx, slow.vx}));
}

// A sword reaches a creature whose centre tile, here (135, 99) a pixel above row
// 100, is within one tile of the pointed one on both axes; with the strike
// cooling down it reaches none. One level with the player is knocked rightwards.
TEST_F(Creatures, AStrikeReachesOneTileAroundTheCreaturesCentre) {
    fixtures::hold(g, ITEM_SHORT_SWORD);
    const int cells[][3] = {{134, 98, 1}, {136, 100, 1}, {133, 99, 0}, {137, 99, 0}, {135, 97, 0}, {135, 101, 0}};
    for (const auto& [tx, ty, struck] : cells) {
        put(g, 0, 76.0f).y = 1592.0f;
        g.player.attack_cooldown = 0.0f;
        EXPECT_EQ(struck == 1, strike_creature(&g, tx, ty)) << tx << ", " << ty;
    }
    g.player.attack_cooldown = 0.01f;
    EXPECT_EQ(false, strike_creature(&g, 135, 99));
    put(g, 0, 0.0f);
    g.player.attack_cooldown = 0.0f;
    ASSERT_EQ(true, strike_creature(&g, 130, 100));
    EXPECT_EQ(145.0f, g.creatures[0].vx);
}
