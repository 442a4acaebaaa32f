// Whole frames read back: the play view in full light, the title and the inventory overlay.
#include <cmath>
#include <cstring>
#include <filesystem>
#include <utility>

#include "core/tiles.h"
#include "render/render_support.h"
#include "save/save_file.h"
#include "save/save_path.h"
#include "world/new_game.h"

namespace {

constexpr std::uint32_t SKY = rgb(109, 168, 217), HUD = rgb(238, 241, 235), LABEL = rgb(239, 238, 220);
constexpr std::uint32_t HIGHLIGHT = rgb(255, 211, 91), EDGE = rgb(111, 244, 204), HINT = rgb(127, 143, 153);

// The far hills' last step has no width and must not leave a column at x = 60.
TEST(PlayView, UnknownScreensDrawSkyAndHillsAlone) {
    Canvas(*game_on(9)).expect(
        {{320, 100, SKY}, {60, 150, rgb(44, 82, 104)}, {60, 235, rgb(47, 91, 80)}, {60, 140, SKY}});
}

// The moon shows only strictly between 0.55 and 0.93; even darkened, the sun is
// redder than blue and the moon bluer.
TEST(PlayView, SunAndMoonSwitchAtTheirBounds) {
    const std::pair<float, bool> cases[] = {{0.55f, true}, {std::nextafter(0.55f, 1.0f), false},
                                            {std::nextafter(0.93f, 0.0f), false}, {0.93f, true}};
    for (const auto& [t, sun] : cases) {
        auto g = game_on(SCREEN_PLAYING);
        g->time_of_day = t;
        const std::uint32_t px = Canvas(*g).at(static_cast<int>((std::cos(t * 6.2831855f) * -0.46f + 0.5f) * 640.0f),
                                               static_cast<int>(std::sin(t * 6.2831855f) * 105.0f + 50.0f));
        EXPECT_EQ((px >> 16) > (px & 255), sun) << t;
    }
}

// Six hearts for 11 hp at 7: three full, a left half, two empty. "12" starts at
// its slot's x + 19; a count of 1 shows no number.
TEST(PlayView, HudHeartsAndHotbarCounts) {
    constexpr std::uint32_t red = rgb(224, 67, 83), lobe = rgb(240, 88, 96), empty = rgb(72, 48, 62);
    auto g = game_on(SCREEN_PLAYING);
    g->player.max_hp = 11;
    g->player.hp = 7;
    g->player.inventory[2] = {TILE_DIRT, 12};
    g->player.inventory[3] = {TILE_STONE, 1};
    g->player.selected = 2;
    Canvas c(*g);
    const int x = 150 + 34 * 2;
    c.expect({{46, 15, red}, {48, 10, lobe}, {56, 15, red}, {60, 15, empty}, {61, 10, empty}, {70, 15, empty},
              {84, 15, empty}, {98, 15, SKY}, {x, 332, rgb(255, 222, 95)}, {x + 34, 332, rgb(83, 100, 112)},
              {x + 16, 337, rgb(116, 78, 53)}, {x + 21, 345, HUD}, {x + 26, 345, HUD}});
    EXPECT_NE(c.at(x + 20, 345), HUD);
    EXPECT_EQ(c.count(x + 52, 345, 14, 7, HUD), 0);
}

// The "LOAD WORLD" label stays dim, highlighted or not, until there is a save to
// load; notices on the title are failures.
TEST(TitleScreen, LoadWorldColourFollowsTheSaveFile) {
    constexpr int x = 261, y = 177 + 34 + 9;
    std::filesystem::remove(game_default_save_path());
    auto g = game_on(SCREEN_TITLE, 1);
    std::strcpy(g->notice, "NO WORLD FOUND");
    g->notice_timer = 2.0f;
    Canvas(*g).expect({{x, y, rgb(124, 139, 153)}, {208, 220, EDGE}, {279, 286, rgb(255, 122, 122)}});

    game_new(g.get(), 7, "SAVED");
    ASSERT_TRUE(game_save(g.get(), game_default_save_path()));
    EXPECT_EQ(Canvas(*game_on(SCREEN_TITLE, 1)).at(x, y), HIGHLIGHT);
    EXPECT_EQ(Canvas(*game_on(SCREEN_TITLE, 0)).at(x, y), LABEL);
    std::filesystem::remove(game_default_save_path());
}

// Slot 3 selected and named "EMPTY"; "60" ends at its slot's x + 28; recipe row 1
// outlined; "WOOD + COAL" shows D, three blank cells, C.
TEST(InventoryOverlay, SlotsCountsAndRecipeRows) {
    auto g = game_on(SCREEN_INVENTORY);
    g->player.inventory[2] = {TILE_DIRT, 60};
    g->player.selected = 3;
    g->craft_cursor = 1;
    Canvas c(*g);
    c.expect({{150, 90, HIGHLIGHT}, {48, 90, rgb(55, 70, 85)}, {134, 97, LABEL}, {48, 246, EDGE}, {430, 120, EDGE},
              {430, 85, rgb(10, 16, 27)}, {441, 112, HIGHLIGHT}, {456, 123, HINT}, {481, 123, HINT}});
    EXPECT_EQ(c.count(462, 123, 18, 7, HINT), 0);
}

}  // namespace
