#include <gtest/gtest.h>

#include <cstring>

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
    for (g.tick = 1; g.tick <= 100; ++g.tick) {
        g.creatures[0].alive = 0;
        const bool inward = world_hash(g.seed, static_cast<std::uint32_t>(g.tick), 0) & 1u;
        ASSERT_EQ(creatures_try_spawn(&g), inward) << "tick " << g.tick;
        const Creature& c = g.creatures[0];  // left side 1 px into a column from 5 + 14 to 5 + 22
        EXPECT_TRUE(!inward || (c.x >= 305.0f && c.x <= 433.0f && c.y == 1600.0f && c.vx == -20.0f && c.dir == -1));
    }
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
    EXPECT_TRUE(g.player.hp == 8 && g.player.hurt_timer == 1.0f);
    EXPECT_TRUE(first.hit_cooldown == 1.0f && second.hit_cooldown == 1.0f && beside.hit_cooldown == 0.0f);
    EXPECT_TRUE(g.player.vx == -125.0f && g.player.vy == -120.0f);  // away from the first creature
}

TEST_F(Creatures, ExactlyZeroHealthBringsThePlayerBackAtTheSpawn) {
    g.player.hp = 2;
    g.player.inventory[7] = InventorySlot{TILE_COAL, 3};
    const Creature& killer = put(g, 0, 4.0f, 1);
    const Creature& bystander = put(g, 1, 200.0f);
    creatures_step(&g, fixtures::STEP);
    EXPECT_TRUE(g.player.hp == g.player.max_hp && g.player.vx == 0.0f && g.player.vy == 0.0f);
    EXPECT_TRUE(g.player.x == static_cast<float>(g.spawn_x * 16 + 2) && g.player.y == static_cast<float>(g.spawn_y * 16));
    EXPECT_TRUE(std::strcmp(g.notice, "THE GLIMWICK BRINGS YOU BACK") == 0 && g.player.inventory[7].count == 3);
    // The spawn is far from the room: creatures are judged from the new position.
    EXPECT_TRUE(killer.alive == 0 && bystander.alive == 0);
}
