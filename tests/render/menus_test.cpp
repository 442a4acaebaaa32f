// The title screen and the inventory overlay at their laid-out positions and colours.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "core/tiles.h"
#include "render/render_support.h"
#include "save/save_file.h"
#include "save/save_path.h"

namespace {

constexpr std::uint32_t LABEL = rgb(239, 238, 220), HIGHLIGHT = rgb(255, 211, 91), EDGE = rgb(111, 244, 204);
constexpr std::uint32_t HINT = rgb(127, 143, 153);

// The "LOAD WORLD" label stays dim, highlighted or not, until there is a save to load.
TEST(TitleScreen, LoadWorldColourFollowsTheSaveFile) {
    constexpr int x = 261, y = 177 + 34 + 9;
    std::filesystem::remove(game_default_save_path());
    auto g = game_on(SCREEN_TITLE, 1);
    std::strcpy(g->notice, "NO WORLD FOUND");
    g->notice_timer = 2.0f;
    Canvas none;
    none.draw(*g);
    none.expect({{x, y, rgb(124, 139, 153)}, {208, 220, EDGE}, {279, 286, rgb(255, 122, 122)}});  // notices fail

    game_new(g.get(), 7, "SAVED");
    ASSERT_TRUE(game_save(g.get(), game_default_save_path()));
    Canvas selected, other;
    selected.draw(*game_on(SCREEN_TITLE, 1));
    other.draw(*game_on(SCREEN_TITLE, 0));
    EXPECT_EQ(selected.at(x, y), HIGHLIGHT);
    EXPECT_EQ(other.at(x, y), LABEL);
    std::filesystem::remove(game_default_save_path());
}

// Slot 3 selected and named "EMPTY"; "60" ends at its slot's x + 28; recipe row 1
// outlined; "WOOD + COAL" shows D, three blank cells, C.
TEST(InventoryOverlay, SlotsCountsAndRecipeRows) {
    auto g = game_on(SCREEN_INVENTORY);
    g->player.inventory[2] = {TILE_DIRT, 60};
    g->player.selected = 3;
    g->craft_cursor = 1;
    Canvas c;
    c.draw(*g);
    c.expect({{150, 90, HIGHLIGHT}, {48, 90, rgb(55, 70, 85)}, {134, 97, LABEL}, {48, 246, EDGE}, {430, 120, EDGE},
              {430, 85, rgb(10, 16, 27)}, {441, 112, HIGHLIGHT}, {456, 123, HINT}, {481, 123, HINT}});
    EXPECT_EQ(c.count(462, 123, 18, 7, HINT), 0);
}

}  // namespace
