// Mining by tool, sword strikes, and the drops that broken tiles leave behind.
#include <gtest/gtest.h>

#include <cmath>

#include "sim/drops.h"
#include "sim/mining.h"
#include "sim/sim_fixtures.h"

namespace {

using fixtures::STEP;

struct Mining : fixtures::Room {
    // Frames of holding the button on (tx, ty) until the tile breaks, or -1.
    int frames_to_break(int tx, int ty, int limit = 2000) {
        for (int i = 1; i <= limit; ++i) {
            game_attack_or_mine(&g, tx, ty, STEP);
            if (tile_at(g, tx, ty) == TILE_EMPTY) return i;
        }
        return -1;
    }
    // A drop whose top-left corner is (dx, dy) from the player's centre.
    void spawn_near(std::uint32_t item, float dx, float dy) {
        spawn_drop(&g, item, g.player.x + 6.0f + dx, g.player.y + 13.0f + dy);
    }
};
using Drops = Mining;

}  // namespace

TEST_F(Mining, BreakingTimeDependsOnTileAndToolAndTheTileDropsAtItsCorner) {
    const int cases[][3] = {  // tile, tool (0 = bare hand), frames at 60 a second
        {TILE_TORCH, 0, 6},       {TILE_TORCH, ITEM_WORN_PICK, 8},     {TILE_STONE, 0, 64},
        {TILE_STONE, ITEM_WORN_PICK, 32}, {TILE_STONE, ITEM_IRON_PICK, 15}, {TILE_STONE, ITEM_SHORT_SWORD, 181},
        {TILE_DIRT, ITEM_WORN_PICK, 25},  // slower than a hand
        {TILE_WOOD, TILE_DIRT, 33}, {TILE_GLOW_CRYSTAL, ITEM_IRON_PICK, 23}, {TILE_GRASS, 0, 20},
    };
    for (const auto& c : cases) {
        fixtures::hold(g, static_cast<std::uint16_t>(c[1]), c[1] != 0);
        tile_at(g, 132, 99) = static_cast<std::uint8_t>(c[0]);
        EXPECT_EQ(frames_to_break(132, 99), c[2]) << "tile " << c[0] << " tool " << c[1];
    }
    const Drop& d = g.drops[9];  // GRASS breaks into DIRT
    EXPECT_TRUE(d.active == 1 && d.item == TILE_DIRT && d.x == 132.0f * 16.0f + 4.0f && d.y == 99.0f * 16.0f + 3.0f);
}

TEST_F(Mining, BedrockAndCrystalWithoutAnIronPickGatherNoWork) {
    fixtures::hold(g, ITEM_IRON_PICK);
    tile_at(g, 132, 100) = TILE_BEDROCK;
    EXPECT_TRUE(frames_to_break(132, 100, 5000) == -1 && g.player.mine_progress == 0.0f);
    tile_at(g, 132, 100) = TILE_GLOW_CRYSTAL;
    for (std::uint16_t tool : {std::uint16_t{0}, ITEM_WORN_PICK, ITEM_IRON_SWORD}) {
        fixtures::hold(g, tool, tool != 0);
        EXPECT_TRUE(frames_to_break(132, 100, 600) == -1 && g.player.mine_progress == 0.0f) << tool;
        EXPECT_STREQ(g.notice, "IRON PICK REQUIRED");
    }
}

TEST_F(Mining, ReachEndsAtExactlyThirtyNineSquareTilesAndANewTargetStartsOver) {
    // Float rounding makes this distance come out as exactly 39.
    const float x = 1606.9544677734375f, y = 1825.8331298828125f;
    fixtures::fill_tiles(g, 95, 110, 110, 120, TILE_EMPTY);
    tile_at(g, 106, 117) = tile_at(g, 100, 115) = TILE_STONE;
    fixtures::put_player(g, x, y);
    game_attack_or_mine(&g, 100, 115, STEP);
    game_attack_or_mine(&g, 106, 117, STEP);
    EXPECT_TRUE(g.player.mine_x == 106 && g.player.mine_progress == STEP);
    fixtures::put_player(g, std::nextafter(x, 0.0f), y);  // a hair further
    game_attack_or_mine(&g, 106, 117, STEP);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
}

TEST_F(Mining, ASwordStrikeComesBeforeMiningAndTheCooldownLetsItMine) {
    tile_at(g, 133, 100) = TILE_DIRT;
    fixtures::hold(g, ITEM_SHORT_SWORD);
    const Creature& c = fixtures::creature_at(g, 3, 133.0f * 16.0f, 1600.0f, 1);
    game_attack_or_mine(&g, 133, 100, STEP);
    EXPECT_EQ(c.hp, 3);
    EXPECT_TRUE(c.vx == 145.0f && c.vy == -95.0f && c.flash == 0.18f);  // away from the player
    EXPECT_TRUE(g.player.attack_cooldown == 0.28f && g.player.mine_progress == 0.0f);
    game_attack_or_mine(&g, 133, 100, STEP);
    EXPECT_TRUE(c.hp == 3 && g.player.mine_progress == STEP * 0.35f);
}

TEST_F(Drops, PickupMeasuresToTheTopLeftCornerAfterTheFirstMove) {
    // Taken or not: the corner 33 px away, the centre 33 px away (corner 37), in
    // range when spawned but popped out of it by the first move, well in range.
    const float offsets[][3] = {{33.0f, 0.0f, 1}, {-37.0f, -4.0f, 0}, {0.0f, -33.5f, 0}, {0.0f, -30.0f, 1}};
    for (const auto& o : offsets) spawn_near(TILE_CLAY, o[0], o[1]);
    drops_step(&g, STEP);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(g.drops[i].active, offsets[i][2] == 0.0f) << "drop " << i;
}

TEST_F(Drops, ATileDugBesideThePlayerIsCollectedAtOnceAndItsCellBuiltOnInTheSameFrame) {
    fixtures::hold(g, TILE_DIRT, 5);
    tile_at(g, 131, 100) = TILE_TORCH;
    in.use_held = 1;
    for (int i = 0; i < 6; ++i) {
        fixtures::point_at(g, in, 131, 100);  // the camera moves between frames
        in.place = i == 5;                    // mining comes first, then placing
        step();
    }
    EXPECT_TRUE(tile_at(g, 131, 100) == TILE_DIRT && g.drops[0].active == 0);
    EXPECT_TRUE(g.player.inventory[0].count == 4 && g.player.inventory[1].item == TILE_TORCH);
}

TEST_F(Drops, TheSixtyFifthGoesStraightIntoTheInventoryAndAFullOneLeavesDropsLying) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_STONE, 999};
    spawn_near(TILE_COAL, 0.0f, -4.0f);  // beside the player, but there is no room
    for (int i = 1; i < MAX_DROPS; ++i) spawn_drop(&g, TILE_DIRT, 1650.0f, 1400.0f);
    const auto table = fixtures::copy_of(g);
    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_TRUE(fixtures::same(*table, g));  // lost: nothing replaced, nothing added
    g.player.inventory[39] = InventorySlot{};
    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(g.player.inventory[39].item, TILE_SAND);
    EXPECT_EQ(std::memcmp(table->drops, g.drops, sizeof g.drops), 0);
    g.player.inventory[39] = InventorySlot{TILE_STONE, 999};
    for (int i = 0; i < 60 * 39; ++i) drops_step(&g, STEP);
    EXPECT_EQ(g.drops[0].active, 1);
    for (int i = 0; i < 61; ++i) drops_step(&g, STEP);
    EXPECT_EQ(g.drops[0].active, 0);
}
