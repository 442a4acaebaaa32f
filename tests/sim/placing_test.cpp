#include <gtest/gtest.h>

#include <cstring>

#include "sim/placing.h"
#include "sim/sim_fixtures.h"
#include "sim/update.h"

namespace {

// The player standing in column 110 of a room (columns 100..130, rows 80..100)
// with 5 DIRT in hand. Its body covers x 1762..1774 and y 1590..1616.
struct Placing : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override {
        fixtures::arena(g, 100, 80, 130, 100);
        fixtures::stand_player(g, 110, 101);
        fixtures::clear_inventory(g);
        fixtures::hold(g, TILE_DIRT, 5);
    }
    // Places at (tx, ty) and reports whether anything changed.
    bool place(int tx, int ty) {
        auto before = std::make_unique<Game>();
        std::memcpy(before.get(), &g, sizeof g);
        game_place(&g, tx, ty);
        return std::memcmp(before.get(), &g, sizeof g) != 0;
    }
};

}  // namespace

TEST_F(Placing, PlacesTheHeldBlockAndTakesOneFromTheSlot) {
    EXPECT_TRUE(place(113, 100));  // on the floor
    EXPECT_EQ(tile_at(g, 113, 100), TILE_DIRT);
    EXPECT_EQ(g.player.inventory[0].count, 4);
    EXPECT_TRUE(place(113, 99));  // on top of the first
    EXPECT_EQ(tile_at(g, 113, 99), TILE_DIRT);

    fixtures::hold(g, TILE_TORCH, 1);
    EXPECT_TRUE(place(107, 100));
    EXPECT_EQ(tile_at(g, 107, 100), TILE_TORCH);
    // The last unit empties the slot; the next click places nothing.
    EXPECT_EQ(g.player.inventory[0].item, 0);
    EXPECT_EQ(g.player.inventory[0].count, 0);
    EXPECT_FALSE(place(106, 100));
}

TEST_F(Placing, OuterRingOfTheGridIsNeverBuiltOn) {
    fixtures::fill_tiles(g, 0, 0, 12, 8, TILE_EMPTY);
    fixtures::fill_tiles(g, 0, 4, 12, 4, TILE_STONE);
    fixtures::stand_player(g, 6, 4);
    tile_at(g, 1, 2) = TILE_STONE;  // support for column 0
    tile_at(g, 4, 1) = TILE_STONE;  // support for row 0
    EXPECT_FALSE(place(0, 2));
    EXPECT_FALSE(place(4, 0));
    EXPECT_TRUE(place(1, 1));
}

TEST_F(Placing, BottomAndRightRingsAreRefusedToo) {
    fixtures::fill_tiles(g, WORLD_W - 12, WORLD_H - 8, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    fixtures::fill_tiles(g, WORLD_W - 12, WORLD_H - 3, WORLD_W - 3, WORLD_H - 3, TILE_STONE);
    fixtures::stand_player(g, WORLD_W - 5, WORLD_H - 3);
    tile_at(g, WORLD_W - 2, WORLD_H - 2) = TILE_STONE;
    EXPECT_FALSE(place(WORLD_W - 1, WORLD_H - 2));
    EXPECT_FALSE(place(WORLD_W - 2, WORLD_H - 1));
    EXPECT_TRUE(place(WORLD_W - 3, WORLD_H - 2));
}

TEST_F(Placing, OnlyWithinReach) {
    fixtures::fill_tiles(g, 100, 101, 130, 101, TILE_STONE);
    EXPECT_FALSE(place(117, 100));  // seven tiles along the floor
    EXPECT_TRUE(place(116, 100));
}

TEST_F(Placing, OccupiedCellsRefuseEvenWhenPassable) {
    for (std::uint8_t t : {TILE_LEAVES, TILE_TORCH, TILE_STONE}) {
        tile_at(g, 113, 100) = t;
        EXPECT_FALSE(place(113, 100)) << int(t);
    }
}

TEST_F(Placing, OnlyPlaceableBlocksLeaveTheHand) {
    const std::uint16_t refused[] = {ITEM_WORN_PICK, ITEM_IRON_SWORD, TILE_BEDROCK};
    for (std::uint16_t item : refused) {
        fixtures::hold(g, item, 3);
        EXPECT_FALSE(place(113, 100)) << item;
    }
    fixtures::clear_inventory(g);
    EXPECT_FALSE(place(113, 100));
    fixtures::hold(g, TILE_GLOW_CRYSTAL, 1);
    EXPECT_TRUE(place(113, 100));
    EXPECT_EQ(tile_at(g, 113, 100), TILE_GLOW_CRYSTAL);
}

TEST_F(Placing, NeedsANeighbourSharingAnEdge) {
    tile_at(g, 114, 95) = TILE_LEAVES;  // only diagonal to (113, 94) and (113, 96)
    EXPECT_FALSE(place(113, 94));
    EXPECT_FALSE(place(113, 96));
    EXPECT_TRUE(place(113, 95));  // beside the leaves: any tile supports
}

TEST_F(Placing, MayTouchButNotOverlapThePlayer) {
    // Cell 111 starts at x 1776; move the player so its right edge meets it exactly.
    fixtures::put_player(g, 1764.0f, 1590.0f);
    EXPECT_TRUE(place(111, 100));
    tile_at(g, 111, 100) = TILE_EMPTY;
    fixtures::put_player(g, 1764.0f + 1.0f, 1590.0f);  // one pixel of overlap
    EXPECT_FALSE(place(111, 100));
    // Above the head: the body's top at 1590 lies inside row 99.
    tile_at(g, 110, 98) = TILE_STONE;
    EXPECT_FALSE(place(110, 99));
}

TEST_F(Placing, CreaturesAndDropsDoNotBlockABlock) {
    Creature& c = g.creatures[0];
    c.alive = 1;
    c.x = 113.0f * 16.0f + 1.0f;
    c.y = 100.0f * 16.0f + 1.0f;
    c.hp = 5;
    EXPECT_TRUE(place(113, 100));
    // Now wedged in a solid tile, it cannot move.
    FrameInput in{};
    g.creature_spawn_timer = 1.0e9f;
    for (int i = 0; i < 10; ++i) game_update(&g, &in, fixtures::STEP);
    EXPECT_EQ(c.x, 113.0f * 16.0f + 1.0f);
    EXPECT_EQ(c.y, 100.0f * 16.0f + 1.0f);
}

TEST_F(Placing, PlaceAndMineCanHappenInOneFrame) {
    FrameInput in{};
    g.creature_spawn_timer = 1.0e9f;
    tile_at(g, 113, 100) = TILE_TORCH;
    g.player.mine_x = 113;
    g.player.mine_y = 100;
    g.player.mine_progress = 0.099f;  // one more frame breaks it
    fixtures::point_at(g, in, 113, 100);
    in.use_held = 1;
    in.place = 1;
    game_update(&g, &in, fixtures::STEP);
    // Mined first, then the same cell is built on again with the held DIRT.
    EXPECT_EQ(tile_at(g, 113, 100), TILE_DIRT);
    EXPECT_EQ(g.player.inventory[0].count, 4);
}
