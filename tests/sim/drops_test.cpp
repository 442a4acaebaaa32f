#include <gtest/gtest.h>

#include <cstring>

#include "core/inventory.h"
#include "sim/drops.h"
#include "sim/sim_fixtures.h"
#include "world/world_gen.h"

namespace {

using fixtures::STEP;

// The player standing in column 110 of a closed room (columns 100..130, rows
// 80..100); its centre is at (1768, 1603).
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

TEST_F(Drops, SpawnedDropPopsUpWithAHashedSideways) {
    g.tick = 77;
    spawn_drop(&g, TILE_COAL, 1700.0f, 1500.0f);
    g.tick = 78;
    spawn_drop(&g, TILE_COAL, 1700.0f, 1500.0f);
    for (std::uint32_t i = 0; i < 2; ++i) {
        const Drop& d = g.drops[i];
        const std::uint32_t h = world_hash(g.seed, 77 + i, i);
        EXPECT_EQ(d.vx, static_cast<float>(static_cast<int>(h % 31u) - 15) * 0.7f);
        EXPECT_GE(d.vx, -10.5f);
        EXPECT_LE(d.vx, 10.5f);
        EXPECT_EQ(d.vy, -75.0f);
        EXPECT_EQ(d.x, 1700.0f);
        EXPECT_EQ(d.y, 1500.0f);
        EXPECT_EQ(d.item, TILE_COAL);
        EXPECT_EQ(d.count, 1u);
        EXPECT_EQ(d.lifetime, 40.0f);
        EXPECT_EQ(d.active, 1);
    }
}

TEST_F(Drops, SixtyFifthDropGoesStraightIntoTheInventory) {
    for (int i = 0; i < MAX_DROPS; ++i) spawn_drop(&g, TILE_DIRT, 1650.0f, 1400.0f);
    ASSERT_EQ(active_drops(), MAX_DROPS);
    auto table = std::make_unique<Game>();
    std::memcpy(table->drops, g.drops, sizeof g.drops);

    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(std::memcmp(table->drops, g.drops, sizeof g.drops), 0);
    EXPECT_EQ(inventory_count(&g.player, TILE_SAND), 1u);

    // With no room either, the item is simply lost.
    fill_inventory_with_stone();
    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(inventory_count(&g.player, TILE_SAND), 0u);
    EXPECT_EQ(std::memcmp(table->drops, g.drops, sizeof g.drops), 0);
}

TEST_F(Drops, PickupMeasuresToTheTopLeftCornerNotTheCentre) {
    // Both drops sit inside the room's walls so that they cannot move.
    fixtures::fill_tiles(g, 100, 95, 130, 100, TILE_STONE);
    fixtures::stand_player(g, 110, 95);
    const float cx = centre_x();
    const float cy = centre_y();
    spawn_drop(&g, TILE_COAL, cx + 33.0f, cy);         // corner 33 px away, centre 37
    spawn_drop(&g, TILE_CLAY, cx - 37.0f, cy - 4.0f);  // corner 37.2 px away, centre 33
    drops_step(&g, STEP);
    EXPECT_EQ(g.drops[0].active, 0);
    EXPECT_EQ(inventory_count(&g.player, TILE_COAL), 1u);
    EXPECT_EQ(g.drops[1].active, 1);
    EXPECT_EQ(inventory_count(&g.player, TILE_CLAY), 0u);
}

TEST_F(Drops, DropSpawnedInRangeIsTakenOnlyIfStillInRangeAfterItsFirstMove) {
    // The pop carries a drop upwards by about a pixel on its first frame.
    const float cx = centre_x();
    const float cy = centre_y();
    g.tick = 1;
    spawn_drop(&g, TILE_COAL, cx, cy - 33.5f);  // moves out of range
    spawn_drop(&g, TILE_CLAY, cx, cy - 30.0f);  // still in range after the move
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
    EXPECT_EQ(inventory_count(&g.player, TILE_COAL), 0u);
}

TEST_F(Drops, GroundFrictionAppliesOncePerFrame) {
    spawn_drop(&g, TILE_DIRT, 1650.0f, 1616.0f - 8.0f);  // resting on the floor
    Drop& d = g.drops[0];
    d.vy = 0.0f;
    d.vx = 10.0f;
    drops_step(&g, STEP);
    EXPECT_EQ(d.vx, 10.0f * 0.85f);
    drops_step(&g, 0.05f);
    EXPECT_EQ(d.vx, 10.0f * 0.85f * 0.85f);
    EXPECT_EQ(d.y, 1616.0f - 8.0f);
}

TEST_F(Drops, FallingDropsKeepTheirSpeedInTheAirAndStopAtTheirTerminalSpeed) {
    spawn_drop(&g, TILE_DIRT, 1650.0f, 1290.0f);
    Drop& d = g.drops[0];
    const float vx = d.vx;
    for (int i = 0; i < 40; ++i) drops_step(&g, STEP);
    EXPECT_EQ(d.vx, vx);
    EXPECT_EQ(d.vy, 260.0f);
}

TEST_F(Drops, DropInsideASolidTileStaysPut) {
    spawn_drop(&g, TILE_DIRT, 1000.0f, 2000.0f);  // deep in the rock outside the room
    tile_at(g, 62, 125) = TILE_STONE;
    tile_at(g, 62, 124) = TILE_STONE;
    tile_at(g, 63, 125) = TILE_STONE;
    tile_at(g, 63, 124) = TILE_STONE;
    for (int i = 0; i < 30; ++i) drops_step(&g, STEP);
    EXPECT_EQ(g.drops[0].x, 1000.0f);
    EXPECT_EQ(g.drops[0].y, 2000.0f);
    EXPECT_EQ(g.drops[0].active, 1);
}
