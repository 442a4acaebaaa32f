#include <gtest/gtest.h>

#include <cmath>

#include "sim/mining.h"
#include "sim/sim_fixtures.h"
#include "sim/update.h"

namespace {

using fixtures::STEP;

// The player standing in column 110 of a room (columns 100..130, rows 80..100)
// with empty hands; targets are set up next to it.
struct Mining : ::testing::Test {
    std::unique_ptr<Game> game = fixtures::new_world();
    Game& g = *game;
    void SetUp() override {
        fixtures::arena(g, 100, 80, 130, 100);
        fixtures::stand_player(g, 110, 101);
        fixtures::clear_inventory(g);
        g.creature_spawn_timer = 1.0e9f;
        g.notice[0] = '\0';
    }
    // Frames of holding the button on (tx, ty) until the tile breaks, or -1.
    int frames_to_break(int tx, int ty, int limit = 2000) {
        for (int i = 1; i <= limit; ++i) {
            game_attack_or_mine(&g, tx, ty, STEP);
            if (tile_at(g, tx, ty) == TILE_EMPTY) return i;
        }
        return -1;
    }
    Creature& creature_at(int slot, float x, float y, std::int32_t hp = 5) {
        Creature& c = g.creatures[slot];
        c = Creature{};
        c.x = x;
        c.y = y;
        c.hp = hp;
        c.alive = 1;
        return c;
    }
    // A left-edge room: the player in column 2, so column -1 is within reach.
    void at_left_edge() {
        fixtures::arena(g, 1, 80, 20, 100);
        fixtures::stand_player(g, 2, 101);
    }
};

}  // namespace

TEST_F(Mining, BreakingTimeDependsOnTileAndTool) {
    struct Case {
        std::uint8_t tile;
        std::uint16_t tool;  // 0 = bare hand
        int frames;          // at 60 frames a second
    };
    const Case cases[] = {
        {TILE_TORCH, 0, 6},           {TILE_TORCH, ITEM_WORN_PICK, 8},
        {TILE_STONE, 0, 64},          {TILE_STONE, ITEM_WORN_PICK, 32},
        {TILE_STONE, ITEM_IRON_PICK, 15}, {TILE_STONE, ITEM_SHORT_SWORD, 181},
        {TILE_DIRT, 0, 20},           {TILE_DIRT, ITEM_WORN_PICK, 25},  // slower than a hand
        {TILE_WOOD, TILE_DIRT, 33},   {TILE_GLOW_CRYSTAL, ITEM_IRON_PICK, 23},
    };
    for (const Case& c : cases) {
        fixtures::clear_inventory(g);
        if (c.tool != 0) fixtures::hold(g, c.tool);
        tile_at(g, 112, 100) = c.tile;
        EXPECT_EQ(frames_to_break(112, 100), c.frames) << "tile " << int(c.tile) << " tool " << c.tool;
    }
}

TEST_F(Mining, BrokenTileDropsItsItemAtTheTileCorner) {
    tile_at(g, 113, 99) = TILE_GRASS;
    ASSERT_GT(frames_to_break(113, 99), 0);
    const Drop& d = g.drops[0];
    EXPECT_EQ(d.active, 1);
    EXPECT_EQ(d.item, TILE_DIRT);  // grass gives dirt
    EXPECT_EQ(d.x, 113.0f * 16.0f + 4.0f);
    EXPECT_EQ(d.y, 99.0f * 16.0f + 3.0f);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
}

TEST_F(Mining, BedrockEmptySpaceAndGuardedCrystalGatherNoWork) {
    fixtures::hold(g, ITEM_IRON_PICK);
    tile_at(g, 112, 100) = TILE_BEDROCK;
    EXPECT_EQ(frames_to_break(112, 100, 5000), -1);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
    g.player.mine_progress = 0.4f;
    game_attack_or_mine(&g, 112, 95, STEP);  // empty
    EXPECT_EQ(g.player.mine_progress, 0.0f);

    tile_at(g, 112, 100) = TILE_GLOW_CRYSTAL;
    for (std::uint16_t tool : {std::uint16_t{0}, ITEM_WORN_PICK, ITEM_IRON_SWORD}) {
        fixtures::clear_inventory(g);
        if (tool) fixtures::hold(g, tool);
        g.notice_timer = 0.0f;
        EXPECT_EQ(frames_to_break(112, 100, 600), -1);
        EXPECT_EQ(g.player.mine_progress, 0.0f);
        EXPECT_STREQ(g.notice, "IRON PICK REQUIRED");
        EXPECT_EQ(g.notice_timer, 2.2f);
    }
}

TEST_F(Mining, ChangingTargetStartsOver) {
    tile_at(g, 112, 100) = TILE_STONE;
    tile_at(g, 108, 100) = TILE_STONE;
    for (int i = 0; i < 30; ++i) game_attack_or_mine(&g, 112, 100, STEP);
    game_attack_or_mine(&g, 108, 100, STEP);
    EXPECT_EQ(g.player.mine_x, 108);
    EXPECT_EQ(g.player.mine_y, 100);
    EXPECT_EQ(g.player.mine_progress, STEP);
}

TEST_F(Mining, ReachEndsAtExactlyThirtyNineSquareTiles) {
    // Float rounding makes this distance come out as exactly 39.
    const float x = 1606.9544677734375f;
    const float y = 1825.8331298828125f;
    fixtures::fill_tiles(g, 95, 110, 110, 120, TILE_EMPTY);
    tile_at(g, 106, 117) = TILE_STONE;
    fixtures::put_player(g, x, y);
    game_attack_or_mine(&g, 106, 117, STEP);
    EXPECT_GT(g.player.mine_progress, 0.0f);
    fixtures::put_player(g, std::nextafter(x, 0.0f), y);  // a hair further
    game_attack_or_mine(&g, 106, 117, STEP);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
}

TEST_F(Mining, PointingOffTheGridKeepsTheWorkSoFar) {
    at_left_edge();
    g.player.mine_progress = 0.3f;
    game_attack_or_mine(&g, -1, 99, STEP);
    EXPECT_EQ(g.player.mine_progress, 0.3f);
}

TEST_F(Mining, SwordStrikesACreatureInsteadOfMiningThenMinesDuringTheCooldown) {
    tile_at(g, 113, 100) = TILE_DIRT;
    fixtures::hold(g, ITEM_SHORT_SWORD);
    Creature& c = creature_at(3, 113.0f * 16.0f + 1.0f, 100.0f * 16.0f + 2.0f, 7);
    game_attack_or_mine(&g, 113, 100, STEP);
    EXPECT_EQ(c.hp, 3);
    EXPECT_EQ(c.vx, 145.0f);  // away from the player, who stands to its left
    EXPECT_EQ(c.vy, -95.0f);
    EXPECT_EQ(c.flash, 0.18f);
    EXPECT_EQ(g.player.attack_cooldown, 0.28f);
    EXPECT_EQ(g.player.mine_progress, 0.0f);
    game_attack_or_mine(&g, 113, 100, STEP);
    EXPECT_EQ(c.hp, 3);
    EXPECT_EQ(g.player.mine_progress, STEP * 0.35f);
}

TEST_F(Mining, StrikeHitsTheFirstCreatureWithinOneTileAndAKillDropsCoal) {
    fixtures::hold(g, ITEM_IRON_SWORD);
    Creature& off = creature_at(0, 109.0f * 16.0f, 99.0f * 16.0f);  // centre tile two columns off
    Creature& hit = creature_at(5, 106.0f * 16.0f, 98.0f * 16.0f);  // left of the player
    Creature& later = creature_at(6, 107.0f * 16.0f, 99.0f * 16.0f);
    game_attack_or_mine(&g, 107, 99, STEP);
    EXPECT_EQ(off.hp, 5);
    EXPECT_EQ(later.hp, 5);
    EXPECT_EQ(hit.vx, -145.0f);
    EXPECT_EQ(hit.alive, 0);
    EXPECT_EQ(g.drops[0].active, 1);
    EXPECT_EQ(g.drops[0].item, TILE_COAL);
    EXPECT_EQ(g.drops[0].x, 106.0f * 16.0f);
    EXPECT_EQ(g.drops[0].y, 98.0f * 16.0f);
}

TEST_F(Mining, StrikesReachCreaturesOffTheGridButOnlyWithASword) {
    at_left_edge();
    Creature& c = creature_at(0, 1.0f, 99.0f * 16.0f);
    fixtures::hold(g, ITEM_WORN_PICK);
    game_attack_or_mine(&g, -1, 99, STEP);
    EXPECT_EQ(c.hp, 5);
    fixtures::hold(g, ITEM_SHORT_SWORD);
    game_attack_or_mine(&g, -1, 99, STEP);
    EXPECT_EQ(c.hp, 1);
}

TEST_F(Mining, CreatureStuckInABlockStaysStuckAfterAStrike) {
    fixtures::hold(g, ITEM_SHORT_SWORD);
    tile_at(g, 113, 100) = TILE_DIRT;
    Creature& c = creature_at(0, 113.0f * 16.0f + 1.0f, 100.0f * 16.0f + 1.0f);
    game_attack_or_mine(&g, 113, 100, STEP);
    ASSERT_EQ(c.hp, 1);
    FrameInput in{};
    for (int i = 0; i < 10; ++i) game_update(&g, &in, STEP);
    EXPECT_EQ(c.x, 113.0f * 16.0f + 1.0f);
    EXPECT_EQ(c.y, 100.0f * 16.0f + 1.0f);
}

TEST_F(Mining, DiggingBesideThePlayerCollectsAtOnce) {
    FrameInput in{};
    tile_at(g, 111, 100) = TILE_TORCH;
    in.use_held = 1;
    for (int i = 0; i < 6; ++i) {
        fixtures::point_at(g, in, 111, 100);  // the camera moves between frames
        game_update(&g, &in, STEP);
    }
    EXPECT_EQ(tile_at(g, 111, 100), TILE_EMPTY);
    EXPECT_EQ(g.drops[0].active, 0);
    EXPECT_EQ(g.player.inventory[0].item, TILE_TORCH);
}
