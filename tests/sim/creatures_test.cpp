#include <gtest/gtest.h>

#include <cstdlib>

#include "sim/creatures.h"
#include "sim/sim_fixtures.h"
#include "world/world_gen.h"

namespace {

using fixtures::STEP;

constexpr float FLOOR_Y = 1616.0f;  // top of row 101, the room's floor

// A wide room (columns 100..160, rows 80..100) over solid rock, the player in
// column 130: its middle row is 100, so the spawn search covers rows 87..111.
struct Creatures : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override {
        fixtures::arena(g, 100, 80, 160, 100);
        fixtures::fill_tiles(g, 99, 102, 161, 115, TILE_STONE);
        fixtures::stand_player(g, 130, 101);
    }
    Creature& put(int slot, float x, std::int32_t kind = 0) {
        Creature& c = g.creatures[slot];
        c = Creature{};
        c.x = x;
        c.y = FLOOR_Y - 14.0f;
        c.kind = kind;
        c.hp = kind ? 7 : 5;
        c.dir = 1;
        c.alive = 1;
        c.on_ground = 1;
        return c;
    }
    // Every column of the room gets the same band: solid but for two-cell pockets
    // whose upper rows are listed.
    void band_with_pockets(std::initializer_list<int> upper_rows) {
        fixtures::fill_tiles(g, 100, 80, 160, 115, TILE_STONE);
        for (int k : upper_rows) fixtures::fill_tiles(g, 100, k, 160, k + 1, TILE_EMPTY);
    }
    // Tries one spawn into an empty table at each tick in turn until one lands.
    bool spawns_at_some_tick() {
        for (std::uint64_t t = 1; t < 200; ++t) {
            g.creatures[0].alive = 0;
            g.tick = t;
            if (creatures_try_spawn(&g)) return true;
        }
        return false;
    }
};

}  // namespace

TEST_F(Creatures, SpawnStandsAboveTheGroundFourteenToTwentyTwoTilesAwayFacingThePlayer) {
    for (std::uint64_t t = 1; t <= 100; ++t) {
        g.tick = t;
        g.creatures[0].alive = 0;
        ASSERT_TRUE(creatures_try_spawn(&g)) << "tick " << t;  // the whole room has standing room
        const Creature& c = g.creatures[0];
        const int col = (static_cast<int>(c.x) - 1) / 16;
        EXPECT_EQ(c.x, static_cast<float>(col * 16 + 1));
        EXPECT_GE(std::abs(col - 130), 14);
        EXPECT_LE(std::abs(col - 130), 22);
        EXPECT_EQ(c.y, 100.0f * 16.0f);
        EXPECT_EQ(c.vx, col > 130 ? -20.0f : 20.0f);
        EXPECT_EQ(c.dir, col > 130 ? -1 : 1);
        EXPECT_EQ(c.hp, c.kind == 1 ? 7 : 5);
    }
}

TEST_F(Creatures, NearAWorldEdgeOnlyTheInwardSideSpawns) {
    fixtures::arena(g, 1, 80, 60, 100);
    fixtures::fill_tiles(g, 0, 102, 61, 115, TILE_STONE);
    fixtures::stand_player(g, 5, 101);
    int refused = 0;
    for (std::uint64_t t = 1; t <= 100; ++t) {
        g.tick = t;
        g.creatures[0].alive = 0;
        const bool inward = world_hash(g.seed, static_cast<std::uint32_t>(t), 0) & 1u;
        EXPECT_EQ(creatures_try_spawn(&g), inward) << "tick " << t;
        if (inward) {
            EXPECT_GT(g.creatures[0].x, g.player.x);
        }
        refused += !inward;
    }
    EXPECT_GT(refused, 0);
}

TEST_F(Creatures, NearestRowWinsAndTheHigherOneBreaksATie) {
    band_with_pockets({96, 102});  // standing rows 97 and 103, both three from row 100
    ASSERT_TRUE(spawns_at_some_tick());
    EXPECT_EQ(g.creatures[0].y, 97.0f * 16.0f);
    band_with_pockets({94, 101});  // rows 95 and 102: the lower one is nearer
    ASSERT_TRUE(spawns_at_some_tick());
    EXPECT_EQ(g.creatures[0].y, 102.0f * 16.0f);
}

TEST_F(Creatures, OnlyEmptyCellsOverSolidGroundWithinTheBandQualify) {
    const int rows[] = {86, 87, 111, 112};  // the band's end rows are included
    const bool spawns[] = {false, true, true, false};
    for (int i = 0; i < 4; ++i) {
        band_with_pockets({rows[i]});
        EXPECT_EQ(spawns_at_some_tick(), spawns[i]) << "row " << rows[i];
    }
    band_with_pockets({});
    EXPECT_FALSE(spawns_at_some_tick());
    band_with_pockets({96});
    fixtures::fill_tiles(g, 100, 96, 160, 96, TILE_LEAVES);  // leaves are not free here
    EXPECT_FALSE(spawns_at_some_tick());
    band_with_pockets({96});
    fixtures::fill_tiles(g, 100, 98, 160, 98, TILE_TORCH);  // nor is a torch ground
    EXPECT_FALSE(spawns_at_some_tick());
}

TEST_F(Creatures, ChaseUpToTheKindsLimitOrWanderFromTheGround) {
    Creature& small = put(0, g.player.x + 100.0f, 0);
    Creature& big = put(1, g.player.x - 150.0f, 1);
    Creature& walker = put(2, g.player.x + 300.0f);
    walker.dir = -1;
    walker.vx = 11.0f;
    Creature& drifter = put(3, g.player.x - 300.0f);
    drifter.vx = 12.0f;  // not below 12: keeps going
    creatures_step(&g, STEP);
    EXPECT_EQ(small.vx, -65.0f * STEP);
    EXPECT_EQ(big.vx, 92.0f * STEP);
    EXPECT_EQ(walker.vx, -22.0f);
    EXPECT_EQ(drifter.vx, 12.0f);
    for (int i = 0; i < 50; ++i) creatures_step(&g, STEP);
    EXPECT_EQ(small.vx, -38.0f);
    EXPECT_EQ(big.vx, 52.0f);
}

TEST_F(Creatures, WandererHopsAgainstAStepEveryTimeButCannotClimbIt) {
    tile_at(g, 140, 100) = TILE_STONE;
    Creature& c = put(0, 140.0f * 16.0f - 14.5f);
    g.player.x = 1900.0f;  // out of chase range
    int hops = 0;
    for (int i = 0; i < 120; ++i) {
        const bool grounded = c.on_ground;
        creatures_step(&g, STEP);
        if (grounded) {
            EXPECT_EQ(c.vy, -150.0f + 680.0f * STEP) << "frame " << i;
            ++hops;
        }
    }
    EXPECT_GT(hops, 2);
    EXPECT_LT(c.x, 140.0f * 16.0f - 14.0f);
}

TEST_F(Creatures, ContactHurtsOnceAndEveryTouchingCreatureSpendsItsAttack) {
    const float px = g.player.x;
    Creature& toucher = put(2, px + 12.0f);  // edges meeting is not contact
    creatures_step(&g, 0.0f);
    EXPECT_EQ(g.player.hp, 10);
    EXPECT_EQ(toucher.hit_cooldown, 0.0f);
    toucher.alive = 0;

    Creature& first = put(0, px + 5.0f, 1);
    Creature& second = put(1, px - 5.0f, 0);
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, 8);
    EXPECT_EQ(g.player.hurt_timer, 1.0f);
    EXPECT_EQ(g.player.vx, -125.0f);  // away from the first creature
    EXPECT_EQ(g.player.vy, -120.0f);
    EXPECT_EQ(first.hit_cooldown, 1.0f);
    EXPECT_EQ(second.hit_cooldown, 1.0f);

    g.player.hurt_timer = 0.0f;
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, 8);  // their own cooldowns still run
}

TEST_F(Creatures, ReachingExactlyZeroHealthBringsThePlayerBackAtTheSpawn) {
    g.player.hp = 3;
    g.player.inventory[7] = InventorySlot{TILE_COAL, 3};
    Creature& killer = put(0, g.player.x + 4.0f, 1);
    creatures_step(&g, STEP);
    ASSERT_EQ(g.player.hp, 1);
    g.player.hurt_timer = 0.0f;
    killer.hit_cooldown = 0.0f;
    killer.kind = 0;
    Creature& bystander = put(1, g.player.x + 200.0f);
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, g.player.max_hp);
    EXPECT_EQ(g.player.x, static_cast<float>(g.spawn_x * 16 + 2));
    EXPECT_EQ(g.player.y, static_cast<float>(g.spawn_y * 16));
    EXPECT_EQ(g.player.vx, 0.0f);
    EXPECT_EQ(g.player.vy, 0.0f);
    EXPECT_STREQ(g.notice, "THE GLIMWICK BRINGS YOU BACK");
    EXPECT_EQ(g.player.inventory[7].count, 3);
    // The spawn is far from the room: the killer is judged from the new position.
    EXPECT_EQ(killer.alive, 0);
    EXPECT_EQ(bystander.alive, 0);
}

TEST_F(Creatures, DespawnFarAwayOrBelowTheWorld) {
    Creature& far = put(0, g.player.x + 1153.0f);
    Creature& edge = put(1, g.player.x - 1100.0f);
    Creature& sunk = put(2, g.player.x + 50.0f);
    sunk.y = 2561.0f;
    creatures_step(&g, 0.0f);
    EXPECT_EQ(far.alive, 0);
    EXPECT_EQ(edge.alive, 1);
    EXPECT_EQ(sunk.alive, 0);
}
