
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
    g.player.hp = 3;
    creatures_step(&g, 0.0f);
    EXPECT_EQ(1, g.player.hp) << "one hp left is still alive";
    EXPECT_EQ(1.0f, first.hit_cooldown);
    EXPECT_EQ(1.0f, second.hit_cooldown);
    EXPECT_EQ(0.0f, beside.hit_cooldown);
    EXPECT_EQ(0.0f, left.hit_cooldown);
    EXPECT_EQ(125.0f, g.player.vx);  // level counts as right of the first; the rest of a hit is in the play digests
    EXPECT_EQ(1, kept.alive);
    EXPECT_EQ(0, gone.alive);
}

// A sword reaches a creature whose centre tile, here (135, 100), is within one
// tile of the pointed one on both axes; with the strike cooling down it reaches none.
TEST_F(Creatures, AStrikeReachesOneTileAroundTheCreaturesCentre) {
    fixtures::hold(g, ITEM_SHORT_SWORD);
    const int cells[][3] = {{134, 99, 1}, {136, 101, 1}, {133, 100, 0}, {137, 100, 0}, {135, 98, 0}, {135, 102, 0}};
    for (const auto& [tx, ty, struck] : cells) {
        put(g, 0, 76.0f);
        g.player.attack_cooldown = 0.0f;
        EXPECT_EQ(struck == 1, strike_creature(&g, tx, ty)) << tx << ", " << ty;
    }
    g.player.attack_cooldown = 0.01f;
    EXPECT_EQ(false, strike_creature(&g, 135, 100));
}
