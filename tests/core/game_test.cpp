// A new world's record: defaults, the starting kit, the camera and the notice.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "core/game.h"
#include "core/tiles.h"
#include "world/new_game.h"
#include "world/world_gen.h"

namespace {

std::unique_ptr<Game> new_world(std::uint32_t seed, const char* name) {
    auto g = std::make_unique<Game>();
    std::memset(g.get(), 0xAB, sizeof(Game));  // game_new must not depend on prior contents
    game_new(g.get(), seed, name);
    return g;
}

}  // namespace

TEST(GameNew, DefaultsOfAFreshWorld) {
    auto g = new_world(5010501, "QA WORLD");
    const Player& p = g->player;
    EXPECT_STREQ(g->name, "QA WORLD");
    EXPECT_EQ(g->seed, 5010501u);
    EXPECT_EQ(p.hp, 10);
    EXPECT_EQ(p.max_hp, 10);
    EXPECT_EQ(p.facing, 1);
    EXPECT_EQ(p.mine_x, -1);
    EXPECT_EQ(p.selected, 0u);
    EXPECT_EQ(g->screen, SCREEN_PLAYING);
    EXPECT_EQ(g->running, 1);
    EXPECT_EQ(g->world_open, 1);
    EXPECT_EQ(g->autosave_off, 0);
    EXPECT_EQ(g->tick, 0u);
    EXPECT_EQ(g->day, 1u);
    EXPECT_EQ(g->time_of_day, 0.2f);
    EXPECT_STREQ(g->notice, "A NEW WORLD AWAKENS");
    EXPECT_EQ(g->notice_timer, 2.2f);
    for (const Creature& c : g->creatures) EXPECT_EQ(c.alive, 0);
    for (const Drop& d : g->drops) EXPECT_EQ(d.active, 0);
}

TEST(GameNew, StartingKitAndEmptyRest) {
    auto g = new_world(1, "K");
    const InventorySlot kit[5] = {{100, 1}, {101, 1}, {2, 60}, {4, 12}, {14, 8}};
    for (int i = 0; i < INVENTORY_SLOTS; ++i) {
        const InventorySlot want = i < 5 ? kit[i] : InventorySlot{0, 0};
        EXPECT_EQ(g->player.inventory[i].item, want.item) << i;
        EXPECT_EQ(g->player.inventory[i].count, want.count) << i;
    }
}

TEST(GameNew, PlayerAndCameraFromTheSpawnTile) {
    for (std::uint32_t seed : {1u, 5u, 99u, 5010501u}) {
        auto g = new_world(seed, "C");
        const float x = static_cast<float>(g->spawn_x * 16) + 2.0f;
        const float y = static_cast<float>(g->spawn_y * 16);
        EXPECT_EQ(g->player.x, x);
        EXPECT_EQ(g->player.y, y);
        EXPECT_EQ(g->camera_x, x - 320.0f);
        EXPECT_EQ(g->camera_y, y - 180.0f);
        EXPECT_GE(g->camera_y, 0.0f);  // spawn rows 41..61 keep the first camera inside
        EXPECT_EQ(tile_at(*g, g->spawn_x, g->spawn_y), TILE_EMPTY);
    }
}

TEST(GameNew, OwnNameFieldYieldsTheDefaultName) {
    auto g = new_world(777, "TYPED NAME");
    g->running = 0;
    game_new(g.get(), g->seed, g->name);
    EXPECT_STREQ(g->name, "GLIMWICK WORLD");
    EXPECT_EQ(g->seed, 777u);
    EXPECT_EQ(g->running, 1);
}

TEST(GameNew, SeedZeroAndEmptyName) {
    auto g = new_world(0, nullptr);
    EXPECT_EQ(g->seed, 5u);
    EXPECT_STREQ(g->name, "GLIMWICK WORLD");
}

TEST(GameNotice, CutsTo63CharactersAndRestartsTheTimer) {
    auto g = std::make_unique<Game>();
    const std::string long_text(100, 'N');
    game_notice(g.get(), long_text.c_str());
    EXPECT_EQ(std::strlen(g->notice), 63u);
    EXPECT_EQ(g->notice_timer, 2.2f);
    g->notice_timer = 0.1f;
    game_notice(g.get(), "WORLD SAVED");
    EXPECT_STREQ(g->notice, "WORLD SAVED");
    EXPECT_EQ(g->notice_timer, 2.2f);
}
