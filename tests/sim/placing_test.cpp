
#include "core/game_digest.h"
#include "sim/mining.h"
#include "sim/placing.h"
#include "sim/sim_fixtures.h"

namespace {

struct Placing : fixtures::Room {
    // Places at (tx, ty) and reports whether anything changed.
    bool place(int tx, int ty) {
        const std::uint32_t before = game_digest(&g);
        game_place(&g, tx, ty);
        return before != game_digest(&g);
    }
};

}  // namespace

TEST_F(Placing, RefusalsInOrderRingReachOccupiedHandSupportPlayerAndBuildingWhereMiningJustEnded) {
    fixtures::hold(g, TILE_DIRT, 5);
    // Passable tiles occupy their cell too; LEAVES at (132, 97) support (131, 97)
    // but only touch (131, 96) and (131, 98) at a corner.
    tile_at(g, 133, 100) = tile_at(g, 132, 97) = TILE_LEAVES;
    tile_at(g, 134, 100) = TILE_TORCH;
    const int cells[][3] = {{137, 100, 0}, {133, 100, 0}, {134, 100, 0},  // column, row, placed
                            {131, 96, 0},  {131, 98, 0},  {131, 97, 1},  {136, 100, 1}};
    for (const auto& c : cells) EXPECT_EQ(c[2] == 1, place(c[0], c[1])) << c[0] << ", " << c[1];
    for (std::uint16_t item : {ITEM_WORN_PICK, ITEM_IRON_SWORD, std::uint16_t{TILE_BEDROCK}}) {
        fixtures::hold(g, item, 3);
        EXPECT_FALSE(place(132, 100)) << item;
    }
    fixtures::hold(g, TILE_GLOW_CRYSTAL, 1);  // the last of the stack empties the slot
    EXPECT_TRUE(place(132, 100));
    EXPECT_EQ(TILE_GLOW_CRYSTAL, tile_at(g, 132, 100));
    EXPECT_EQ(0, g.player.inventory[0].item);
    EXPECT_FALSE(place(132, 99));  // an empty hand
    fixtures::hold(g, TILE_DIRT, 6);
    fixtures::put_player(g, 2084.0f, 1590.0f);  // right edge exactly on column 131
    EXPECT_TRUE(place(131, 100));
    fixtures::put_player(g, 2085.0f, 1590.0f);  // one pixel of overlap
    EXPECT_FALSE(place(131, 99));
    fixtures::put_player(g, 2080.0f, 1590.0f);  // left edge exactly on column 129's right
    EXPECT_TRUE(place(129, 100));
    fixtures::put_player(g, 2070.0f, 1600.0f);  // head exactly on row 99's bottom
    EXPECT_TRUE(place(129, 99));
    fixtures::put_player(g, 2082.0f, 1574.0f);  // feet exactly on row 100's top
    EXPECT_TRUE(place(130, 100));
    // Mining comes first in a frame: a TORCH broken beside the player is taken and
    // its cell built on in the same frame.
    tile_at(g, 129, 100) = TILE_TORCH;
    for (int i = 0; i < 5; ++i) game_attack_or_mine(&g, 129, 100, fixtures::STEP);
    fixtures::point_at(g, in, 129, 100);
    in.use_held = in.place = 1;
    step();
    EXPECT_EQ(TILE_DIRT, tile_at(g, 129, 100));
    EXPECT_EQ(TILE_TORCH, g.player.inventory[1].item);
}

// The outermost ring is never built on; the next one is, held up from any side.
TEST_F(Placing, OnlyInsideTheOuterRing) {
    fixtures::hold(g, TILE_DIRT, 50);
    fixtures::fill_tiles(g, 0, 0, 12, 8, TILE_EMPTY);
    fixtures::fill_tiles(g, WORLD_W - 12, WORLD_H - 8, WORLD_W - 1, WORLD_H - 1, TILE_EMPTY);
    tile_at(g, 1, 2) = tile_at(g, 4, 1) = TILE_STONE;  // support for column 0 and row 0
    tile_at(g, 510, 156) = tile_at(g, 507, 158) = TILE_STONE;  // for column 511 and row 159
    const int cells[][3] = {{0, 2, 0}, {4, 0, 0}, {1, 1, 1}, {511, 156, 0}, {507, 159, 0}, {510, 157, 1}, {506, 158, 1}};
    for (const auto& c : cells) {
        fixtures::stand_player(g, c[0] < 100 ? 6 : 506, c[0] < 100 ? 4 : 156);
        EXPECT_EQ(c[2] == 1, place(c[0], c[1])) << c[0] << ", " << c[1];
    }
}
