#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "core/inventory.h"
#include "sim/drops.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::STEP;

// The player standing in column 110 of a closed room (columns 100..130, rows
// 80..100) with an empty inventory.
struct Drops : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override {
        fixtures::arena(g, 100, 80, 130, 100);
        fixtures::stand_player(g, 110, 101);
        fixtures::clear_inventory(g);
    }
    float centre_x() const { return g.player.x + 6.0f; }
    float centre_y() const { return g.player.y + 13.0f; }
    int active_drops() const {
        int n = 0;
        for (const Drop& d : g.drops) n += d.active;
        return n;
    }
    void fill_inventory_with_stone() {
        for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_STONE, 999};
    }
};

}  // namespace

TEST_F(Drops, SixtyFifthDropGoesStraightIntoTheInventoryOrIsLost) {
    for (int i = 0; i < MAX_DROPS; ++i) spawn_drop(&g, TILE_DIRT, 1650.0f, 1400.0f);
    ASSERT_EQ(active_drops(), MAX_DROPS);
    auto table = std::make_unique<Game>();
    std::memcpy(table->drops, g.drops, sizeof g.drops);

    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(std::memcmp(table->drops, g.drops, sizeof g.drops), 0);  // nothing replaced
    EXPECT_EQ(inventory_count(&g.player, TILE_SAND), 1u);

    fill_inventory_with_stone();
    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(inventory_count(&g.player, TILE_SAND), 0u);
    EXPECT_EQ(std::memcmp(table->drops, g.drops, sizeof g.drops), 0);
}

TEST_F(Drops, PickupMeasuresToTheTopLeftCornerNotTheCentre) {
    // Both drops are set inside solid rock so that they cannot move.
    fixtures::fill_tiles(g, 100, 95, 130, 100, TILE_STONE);
    fixtures::stand_player(g, 110, 95);
    spawn_drop(&g, TILE_COAL, centre_x() + 33.0f, centre_y());         // corner 33 px, centre 37
    spawn_drop(&g, TILE_CLAY, centre_x() - 37.0f, centre_y() - 4.0f);  // corner 37.2 px, centre 33
    drops_step(&g, STEP);
    EXPECT_EQ(g.drops[0].active, 0);
    EXPECT_EQ(inventory_count(&g.player, TILE_COAL), 1u);
    EXPECT_EQ(g.drops[1].active, 1);
}

TEST_F(Drops, DropSpawnedInRangeIsTakenOnlyIfStillInRangeAfterItsFirstMove) {
    // The pop carries a new drop upwards by about a pixel on its first frame.
    spawn_drop(&g, TILE_COAL, centre_x(), centre_y() - 33.5f);
    spawn_drop(&g, TILE_CLAY, centre_x(), centre_y() - 30.0f);
    drops_step(&g, STEP);
    EXPECT_EQ(g.drops[0].active, 1);
    EXPECT_EQ(g.drops[1].active, 0);
    EXPECT_EQ(inventory_count(&g.player, TILE_CLAY), 1u);
}

TEST_F(Drops, FullInventoryLeavesDropsLyingUntilTheyExpire) {
    fill_inventory_with_stone();
    spawn_drop(&g, TILE_COAL, centre_x(), centre_y() - 4.0f);
    spawn_drop(&g, TILE_COAL, centre_x(), centre_y() - 4.0f);  // same item, same place: two records
    for (int i = 0; i < 60 * 39; ++i) drops_step(&g, STEP);
    EXPECT_EQ(active_drops(), 2);
    for (int i = 0; i < 61; ++i) drops_step(&g, STEP);
    EXPECT_EQ(active_drops(), 0);
}

TEST_F(Drops, FallKeepsSidewaysSpeedAndGroundFrictionActsOncePerFrame) {
    spawn_drop(&g, TILE_DIRT, 1650.0f, 1290.0f);
    Drop& d = g.drops[0];
    EXPECT_EQ(d.vy, -75.0f);
    EXPECT_LE(std::fabs(d.vx), 10.5f);
    const float vx = d.vx;
    for (int i = 0; i < 40; ++i) drops_step(&g, STEP);
    EXPECT_EQ(d.vx, vx);
    EXPECT_EQ(d.vy, 260.0f);

    d.y = 1616.0f - 8.0f;  // resting on the floor
    d.vy = 0.0f;
    d.vx = 10.0f;
    drops_step(&g, STEP);
    EXPECT_EQ(d.vx, 10.0f * 0.85f);
    drops_step(&g, 0.05f);
    EXPECT_EQ(d.vx, 10.0f * 0.85f * 0.85f);
}
