// A new world's name quirk and the notice; the play test's digests pin every other default.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "core/game.h"
#include "world/new_game.h"

TEST(GameNew, OwnNameFieldYieldsTheDefaultName) {
    auto g = std::make_unique<Game>();
    game_new(g.get(), 777, "TYPED NAME");
    game_new(g.get(), g->seed, g->name);
    EXPECT_STREQ("GLIMWICK WORLD", g->name);
    EXPECT_EQ(777u, g->seed);
}

TEST(GameNotice, CutsTo63CharactersAndRestartsTheTimer) {
    auto g = std::make_unique<Game>();
    game_notice(g.get(), std::string(100, 'N').c_str());
    EXPECT_EQ(std::string(63, 'N'), g->notice);
    g->notice_timer = 0.1f;
    game_notice(g.get(), "WORLD SAVED");
    EXPECT_STREQ("WORLD SAVED", g->notice);
    EXPECT_EQ(2.2f, g->notice_timer);
}
