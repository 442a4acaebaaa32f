#include <gtest/gtest.h>

#include <cstring>

#include "sim/creatures.h"
#include "sim/sim_fixtures.h"
#include "world/world_gen.h"

namespace {

using fixtures::STEP;

constexpr float FLOOR_Y = 1616.0f;  // top of row 101, the rooms' floor

// A wide room (columns 100..160, rows 80..100) with the player standing in
// column 130: its middle row is 100, so the spawn search covers rows 87..111.
struct Creatures : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override {
        fixtures::arena(g, 100, 80, 160, 100);
        fixtures::fill_tiles(g, 99, 102, 161, 115, TILE_STONE);  // no caves under the floor
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
    int alive() const {
        int n = 0;
        for (const Creature& c : g.creatures) n += c.alive;
        return n;
    }
    // Every column of the room gets the same rows in the search band: solid
    // except for the two-cell pockets whose upper cells are listed.
    void band_with_pockets(std::initializer_list<int> upper_rows) {
        fixtures::fill_tiles(g, 100, 80, 160, 115, TILE_STONE);
        for (int k : upper_rows) fixtures::fill_tiles(g, 100, k, 160, k + 1, TILE_EMPTY);
    }
    // Tries one spawn at each tick in turn until one lands.
    bool spawns_at_some_tick() {
        for (std::uint64_t t = 1; t < 200; ++t) {
            g.tick = t;
            if (creatures_try_spawn(&g)) return true;
        }
        return false;
    }
};

}  // namespace

TEST_F(Creatures, SpawnStandsOnTheGroundNearThePlayerAndHeadsForIt) {
    int spawned = 0;
    for (std::uint64_t t = 1; t <= 100; ++t) {
        g.tick = t;
        g.creatures[0].alive = 0;
        if (!creatures_try_spawn(&g)) continue;
        ++spawned;
        const Creature& c = g.creatures[0];
        const int col = (static_cast<int>(c.x) - 1) / 16;
        const int side = col > 130 ? 1 : -1;
        EXPECT_EQ(c.x, static_cast<float>(col * 16 + 1));
        EXPECT_GE(std::abs(col - 130), 14);
        EXPECT_LE(std::abs(col - 130), 22);
        EXPECT_EQ(c.y, 100.0f * 16.0f);  // standing cell just above the floor
        EXPECT_EQ(c.vx, static_cast<float>(-20 * side));
        EXPECT_EQ(c.dir, -side);
        EXPECT_EQ(c.vy, 0.0f);
        EXPECT_EQ(c.hp, c.kind == 1 ? 7 : 5);
        const std::int32_t kind = static_cast<std::int32_t>(world_hash(g.seed, static_cast<std::uint32_t>(col), static_cast<std::uint32_t>(t)) & 1u);
        EXPECT_EQ(c.kind, kind);
        EXPECT_EQ(c.on_ground, 0);
    }
    EXPECT_EQ(spawned, 100);  // the whole room offers standing room
}

TEST_F(Creatures, NearAWorldEdgeOnlyTheInwardSideSpawns) {
    fixtures::arena(g, 1, 80, 60, 100);
    fixtures::fill_tiles(g, 0, 102, 61, 115, TILE_STONE);
    fixtures::stand_player(g, 5, 101);
    int left = 0;
    int right = 0;
    for (std::uint64_t t = 1; t <= 100; ++t) {
        g.tick = t;
        g.creatures[0].alive = 0;
        const bool inward = world_hash(g.seed, static_cast<std::uint32_t>(t), 0) & 1u;
        EXPECT_EQ(creatures_try_spawn(&g), inward) << "tick " << t;
        if (inward) {
            EXPECT_GT(g.creatures[0].x, g.player.x);
            ++right;
        } else {
            ++left;
        }
    }
    EXPECT_GT(left, 0);
    EXPECT_GT(right, 0);
}

TEST_F(Creatures, SpawnUsesTheLowestFreeSlot) {
    put(0, 1700.0f);
    put(1, 1700.0f);
    put(3, 1700.0f);
    ASSERT_TRUE(spawns_at_some_tick());
    EXPECT_EQ(g.creatures[2].alive, 1);
    EXPECT_EQ(g.creatures[4].alive, 0);
}

TEST_F(Creatures, NearestRowWinsAndTheHigherOneBreaksATie) {
    band_with_pockets({96, 102});  // standing rows 97 and 103, both three from row 100
    ASSERT_TRUE(spawns_at_some_tick());
    EXPECT_EQ(g.creatures[0].y, 97.0f * 16.0f);

    g.creatures[0].alive = 0;
    band_with_pockets({94, 101});  // rows 95 and 102: the lower one is nearer
    ASSERT_TRUE(spawns_at_some_tick());
    EXPECT_EQ(g.creatures[0].y, 102.0f * 16.0f);
}

TEST_F(Creatures, SearchBandIncludesBothEndRows) {
    struct Case {
        int upper_row;
        bool spawns;
    };
    const Case cases[] = {{86, false}, {87, true}, {111, true}, {112, false}};
    for (const Case& c : cases) {
        g.creatures[0].alive = 0;
        band_with_pockets({c.upper_row});
        EXPECT_EQ(spawns_at_some_tick(), c.spawns) << "row " << c.upper_row;
    }
}

TEST_F(Creatures, OnlyTrulyEmptyCellsAboveSolidGroundQualify) {
    band_with_pockets({});
    EXPECT_FALSE(spawns_at_some_tick());  // solid through the whole band
    band_with_pockets({96});
    fixtures::fill_tiles(g, 100, 96, 160, 96, TILE_LEAVES);
    EXPECT_FALSE(spawns_at_some_tick());
    band_with_pockets({96});
    fixtures::fill_tiles(g, 100, 98, 160, 98, TILE_TORCH);  // passable ground
    EXPECT_FALSE(spawns_at_some_tick());
    EXPECT_EQ(alive(), 0);
}

TEST_F(Creatures, ChaseAcceleratesTowardsThePlayerUpToTheKindsLimit) {
    Creature& small = put(0, g.player.x + 100.0f, 0);
    Creature& big = put(1, g.player.x - 150.0f, 1);
    creatures_step(&g, STEP);
    EXPECT_EQ(small.vx, -65.0f * STEP);
    EXPECT_EQ(small.dir, -1);
    EXPECT_EQ(big.vx, 92.0f * STEP);
    EXPECT_EQ(big.dir, 1);
    for (int i = 0; i < 50; ++i) creatures_step(&g, STEP);
    EXPECT_EQ(small.vx, -38.0f);
    EXPECT_EQ(big.vx, 52.0f);
}

TEST_F(Creatures, FarCreaturesWanderOnlyFromTheGround) {
    Creature& walker = put(0, g.player.x + 300.0f);
    walker.dir = -1;
    walker.vx = 11.0f;
    creatures_step(&g, STEP);
    EXPECT_EQ(walker.vx, -22.0f);

    Creature& drifter = put(1, g.player.x - 300.0f);
    drifter.vx = 12.0f;  // not below 12: keeps going
    creatures_step(&g, STEP);
    EXPECT_EQ(drifter.vx, 12.0f);

    Creature& faller = put(2, g.player.x - 400.0f);
    faller.y = 1400.0f;
    faller.on_ground = 0;
    faller.vx = 0.0f;
    creatures_step(&g, STEP);
    EXPECT_EQ(faller.vx, 0.0f);
}

TEST_F(Creatures, HopsWheneverItStandsAgainstAWall) {
    fixtures::fill_tiles(g, 140, 100, 140, 100, TILE_STONE);  // a one-tile step
    Creature& c = put(0, 140.0f * 16.0f - 14.0f - 0.5f);
    c.dir = 1;
    g.player.x = 1900.0f;  // out of chase range: it wanders towards the step
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
    // A wandering hop is not high enough to climb the step.
    EXPECT_LT(c.x, 140.0f * 16.0f - 14.0f);
}

TEST_F(Creatures, ContactHurtsOnceAndBothCreaturesSpendTheirAttack) {
    const float px = g.player.x;
    Creature& first = put(0, px + 5.0f, 1);
    Creature& second = put(1, px - 5.0f, 0);
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, 8);
    EXPECT_EQ(g.player.hurt_timer, 1.0f);
    EXPECT_EQ(g.player.vx, -125.0f);  // pushed away from the first creature
    EXPECT_EQ(g.player.vy, -120.0f);
    EXPECT_EQ(first.hit_cooldown, 1.0f);
    EXPECT_EQ(second.hit_cooldown, 1.0f);

    g.player.hurt_timer = 0.0f;
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, 8);  // their own cooldowns still run
}

TEST_F(Creatures, EdgesThatOnlyTouchDoNotHurt) {
    put(0, g.player.x + 12.0f);
    put(1, g.player.x - 14.0f - 1.0f);
    g.creatures[1].vx = 0.0f;
    creatures_step(&g, 0.0f);
    EXPECT_EQ(g.player.hp, 10);
    EXPECT_EQ(g.creatures[0].hit_cooldown, 0.0f);
}

TEST_F(Creatures, ReachingZeroHealthBringsThePlayerBackAtTheSpawn) {
    g.player.hp = 2;
    g.player.inventory[7] = InventorySlot{TILE_COAL, 3};
    g.time_of_day = 0.7f;
    Creature& killer = put(0, g.player.x + 4.0f, 1);
    Creature& bystander = put(1, g.player.x + 200.0f, 0);
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, g.player.max_hp);
    EXPECT_EQ(g.player.x, static_cast<float>(g.spawn_x * 16 + 2));
    EXPECT_EQ(g.player.y, static_cast<float>(g.spawn_y * 16));
    EXPECT_EQ(g.player.vx, 0.0f);
    EXPECT_EQ(g.player.vy, 0.0f);
    EXPECT_STREQ(g.notice, "THE GLIMWICK BRINGS YOU BACK");
    EXPECT_EQ(g.notice_timer, 2.2f);
    EXPECT_EQ(g.player.inventory[7].count, 3);
    EXPECT_EQ(g.time_of_day, 0.7f);
    // The spawn is far from the room: the killer is judged from the new position,
    // and so is every creature after it.
    EXPECT_EQ(killer.alive, 0);
    EXPECT_EQ(bystander.alive, 0);
}

TEST_F(Creatures, OneHealthPointLeftIsStillAlive) {
    g.player.hp = 3;
    put(0, g.player.x + 4.0f, 1);
    creatures_step(&g, STEP);
    EXPECT_EQ(g.player.hp, 1);
    EXPECT_NE(g.player.x, static_cast<float>(g.spawn_x * 16 + 2));
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
