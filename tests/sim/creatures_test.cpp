#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "sim/creatures.h"
#include "sim/sim_fixtures.h"
#include "world/world_gen.h"

namespace {

// In the room the player's middle row is 100, so the spawn search covers rows
// 87..111.
using Creatures = fixtures::Room;

// A creature on the room's floor, its left side `dx` px right of the player's.
Creature& put(Game& g, int slot, float dx, std::int32_t kind = 0) {
    return fixtures::creature_at(g, slot, g.player.x + dx, 1602.0f, kind);
}

}  // namespace

TEST_F(Creatures, NearAWorldEdgeOnlyTheInwardSideSpawnsFourteenToTwentyTwoTilesAway) {
    fixtures::arena(g, 1, 80, 60, 100);  // standing room on row 99 beats any cave below
    fixtures::stand_player(g, 5, 101);
    std::set<float> columns;  // left sides, 1 px into a column
    for (g.tick = 1; g.tick <= 100; ++g.tick) {
        g.creatures[0].alive = 0;
        const bool inward = world_hash(g.seed, static_cast<std::uint32_t>(g.tick), 0) & 1u;
        ASSERT_EQ(inward, creatures_try_spawn(&g)) << "tick " << g.tick;
        if (!inward) continue;
        const Creature& c = g.creatures[0];
        columns.insert(c.x);
        EXPECT_EQ((Creature{c.x, 1600.0f, -20.0f, 0.0f, c.hp, c.kind, -1, 0.0f, 0.0f, 1, 0}), c);
    }
    std::set<float> want;
    for (int k = 5 + 14; k <= 5 + 22; ++k) want.insert(static_cast<float>(k * 16 + 1));
    EXPECT_EQ(want, columns);
}

TEST_F(Creatures, SpawnRowIsTheNearestStandingRoomInTheBandWithTheHigherWinningATie) {
    // Every column the same: solid but for two-cell pockets whose upper rows are
    // given, then the row the spawned creature sits in (-1: none spawns).
    const int bands[][3] = {{86, -1, -1}, {87, -1, 88}, {111, -1, 112}, {112, -1, -1}, {96, 102, 97}, {94, 101, 102}};
    for (const auto& b : bands) {
        fixtures::fill_tiles(g, 100, 80, 160, 115, TILE_STONE);
        for (int k : {b[0], b[1]})
            if (k >= 0) fixtures::fill_tiles(g, 100, k, 160, k + 1, TILE_EMPTY);
        bool spawned = false;
        for (g.tick = 1; g.tick < 200 && !spawned; ++g.tick) spawned = creatures_try_spawn(&g);
        EXPECT_EQ(spawned ? static_cast<int>(g.creatures[0].y) / 16 : -1, b[2]) << "pocket " << b[0];
        g.creatures[0].alive = 0;
    }
}

TEST_F(Creatures, ContactHurtsOnceAndEveryTouchingCreatureSpendsItsAttack) {
    const Creature& first = put(g, 0, 5.0f, 1);
    const Creature& second = put(g, 1, -5.0f, 0);
    const Creature& beside = put(g, 2, 12.0f);  // edges meeting is not contact
    creatures_step(&g, 0.0f);  // with dt 0 nobody moves
    EXPECT_EQ(8, g.player.hp);
    EXPECT_EQ(1.0f, g.player.hurt_timer);
    EXPECT_EQ(1.0f, first.hit_cooldown);
    EXPECT_EQ(1.0f, second.hit_cooldown);
    EXPECT_EQ(0.0f, beside.hit_cooldown);
    EXPECT_EQ(-125.0f, g.player.vx);  // away from the first creature
    EXPECT_EQ(-120.0f, g.player.vy);
}

TEST_F(Creatures, ExactlyZeroHealthBringsThePlayerBackAtTheSpawn) {
    g.player.hp = 2;
    g.player.inventory[7] = InventorySlot{TILE_COAL, 3};
    const Creature& killer = put(g, 0, 4.0f, 1);
    const Creature& bystander = put(g, 1, 200.0f);
    creatures_step(&g, fixtures::STEP);
    auto back = fixtures::new_world();  // as fresh, but for the coal, the timers and the notice
    Player& p = back->player;
    std::memset(p.inventory, 0, sizeof p.inventory);
    p.inventory[7] = InventorySlot{TILE_COAL, 3};
    p.hurt_timer = 1.0f;
    p.on_ground = 1;
    EXPECT_EQ(0, std::memcmp(&p, &g.player, sizeof p));
    EXPECT_STREQ("THE GLIMWICK BRINGS YOU BACK", g.notice);
    // The spawn is far from the room: creatures are judged from the new position.
    EXPECT_EQ(0, killer.alive);
    EXPECT_EQ(0, bystander.alive);
}
