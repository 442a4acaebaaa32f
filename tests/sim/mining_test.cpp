// Mining by tool and reach, and the drops that broken tiles leave behind.

#include <array>
#include <cmath>

#include "core/game_digest.h"

#include "sim/drops.h"
#include "sim/mining.h"
#include "sim/sim_fixtures.h"

namespace {

struct Mining : fixtures::Room {
    // Frames of holding the button on (tx, ty) until the tile breaks, or -1.
    int frames_to_break(int tx, int ty) {
        for (int i = 1; i <= 2000; ++i) {
            game_attack_or_mine(&g, tx, ty, fixtures::STEP);
            if (tile_at(g, tx, ty) == TILE_EMPTY) return i;
        }
        return -1;
    }
};
using Drops = Mining;

}  // namespace

// Frames at 60 a second until each block breaks under each held item (an empty
// hand, a block, every tool, an unknown id), -1 for never: a digest worked out
// once by a separate script from the mining speeds and the hardness table.
// The worn pick is slower than a hand on soft and wooden tiles; only the iron pick
// mines crystal; no work is kept, broken or not.
TEST_F(Mining, BreakingTimeDependsOnTileAndTool) {
    constexpr std::uint16_t HELD[] = {0, TILE_DIRT, ITEM_WORN_PICK, ITEM_SHORT_SWORD,
                                      ITEM_IRON_PICK, ITEM_IRON_SWORD, 104};
    std::uint32_t h = FNV1A_OFFSET;
    for (std::uint8_t tile = 1; tile <= TILE_MAX; ++tile) {
        for (const std::uint16_t item : HELD) {
            fixtures::hold(g, item, item != 0);
            tile_at(g, 132, 99) = tile;
            const std::int32_t frames = frames_to_break(132, 99);
            h = fnv1a(&frames, sizeof frames, h);
            EXPECT_EQ(0.0f, g.player.mine_progress) << "tile " << +tile << " item " << item;
        }
    }
    EXPECT_EQ(0x358DF5E1u, h);
    EXPECT_STREQ("IRON PICK REQUIRED", g.notice);
    // Work on a tile that turns out to need the iron pick is dropped, not kept for it.
    tile_at(g, 132, 99) = TILE_STONE;
    game_attack_or_mine(&g, 132, 99, fixtures::STEP);
    tile_at(g, 132, 99) = TILE_GLOW_CRYSTAL;
    game_attack_or_mine(&g, 132, 99, fixtures::STEP);
    EXPECT_EQ(0.0f, g.player.mine_progress);
}

TEST_F(Mining, ReachEndsAtExactlyThirtyNineSquareTilesAndANewTargetStartsOver) {
    // Float rounding makes this distance come out as exactly 39.
    const float x = 1606.9544677734375f, y = 1825.8331298828125f;
    tile_at(g, 106, 117) = tile_at(g, 100, 115) = TILE_STONE;
    fixtures::put_player(g, x, y);
    game_attack_or_mine(&g, 100, 115, fixtures::STEP);
    game_attack_or_mine(&g, 106, 117, fixtures::STEP);
    EXPECT_EQ(106, g.player.mine_x);
    EXPECT_EQ(fixtures::STEP, g.player.mine_progress);
    fixtures::put_player(g, std::nextafter(x, 0.0f), y);  // a hair further
    game_attack_or_mine(&g, 106, 117, fixtures::STEP);
    EXPECT_EQ(0.0f, g.player.mine_progress);
}

// Exactly 34 px from the body's centre to a resting drop's corner (not its
// centre) is out of reach; a drop whose lifetime reaches exactly 0 is gone.
// (Pickup after the frame's move is pinned by the play digests.)
TEST_F(Drops, ADropExactlyThirtyFourPixelsAwayIsLeft) {
    fixtures::put_player(g, 2082.0f, 1595.0f);  // centre (2088, 1608): level with a drop on the floor
    g.drops[0] = Drop{2122.0f, 1608.0f, 0.0f, 0.0f, TILE_CLAY, 1, 40.0f, 1};
    g.drops[1] = Drop{std::nextafter(2122.0f, 0.0f), 1608.0f, 0.0f, 0.0f, TILE_CLAY, 1, 40.0f, 1};
    g.drops[2] = Drop{2300.0f, 1608.0f, 0.0f, 0.0f, TILE_CLAY, 1, fixtures::STEP, 1};  // out of reach, its last frame
    drops_step(&g, fixtures::STEP);
    EXPECT_EQ((std::array{1, 0, 0}), (std::array<int, 3>{g.drops[0].active, g.drops[1].active, g.drops[2].active}));
}

TEST_F(Drops, TheSixtyFifthGoesStraightIntoTheInventoryAndAFullOneLeavesDropsLying) {
    for (InventorySlot& s : g.player.inventory) s = InventorySlot{TILE_STONE, 999};
    // COAL beside the player, but with no room for it: it lies until its forty seconds are up.
    spawn_drop(&g, TILE_COAL, g.player.x + 6.0f, g.player.y + 9.0f);
    int frames = 0;
    for (; g.drops[0].active && frames < 3000; ++frames) drops_step(&g, fixtures::STEP);
    EXPECT_EQ(2401, frames);
    for (int i = 0; i < MAX_DROPS; ++i) spawn_drop(&g, TILE_DIRT, 1650.0f, 1400.0f);
    const auto table = fixtures::copy_of(g);
    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(game_digest(table.get()), game_digest(&g));  // lost: nothing replaced, nothing added
    g.player.inventory[39] = InventorySlot{};
    spawn_drop(&g, TILE_SAND, 1650.0f, 1400.0f);
    EXPECT_EQ(TILE_SAND, g.player.inventory[39].item);
    EXPECT_EQ(1, g.player.inventory[39].count);
    EXPECT_EQ(0, std::memcmp(table->drops, g.drops, sizeof g.drops));
}

TEST_F(Drops, FallNoFasterThan260PixelsASecond) {
    spawn_drop(&g, TILE_DIRT, 1650.0f, 1290.0f);
    for (int i = 0; i < 45; ++i) drops_step(&g, fixtures::STEP);
    EXPECT_EQ(260.0f, g.drops[0].vy);
}
