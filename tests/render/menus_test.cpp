// Title, create-world form, inventory and pause screens at their laid-out
// positions and colours.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "core/tiles.h"
#include "render/render_support.h"
#include "render/view.h"
#include "save/save_path.h"

namespace {

constexpr std::uint32_t LABEL = rgb(239, 238, 220), HIGHLIGHT = rgb(255, 211, 91), ACCENT = rgb(111, 244, 204);
constexpr std::uint32_t DIM = rgb(124, 139, 153), PANEL_HINT = rgb(127, 143, 153), EDGE = rgb(111, 244, 204);

std::unique_ptr<Game> on_screen(std::uint32_t screen, std::uint32_t cursor = 0) {
    auto g = blank_game();
    g->screen = screen;
    g->menu_cursor = cursor;
    g->time_of_day = 0.47f;
    return g;
}

void draw(Canvas& c, const Game& g) {
    const FrameInput in{};
    render_game(c.renderer, &g, &in);
}

// "LOAD WORLD" at scale 2 starts at 320 - (120 - 2) / 2 on the second button.
constexpr int LOAD_X = 261, LOAD_Y = 177 + 34 + 9;

TEST(TitleScreen, LoadWorldIsDimWithoutASaveAndNoticesAreFailures) {
    scratch_home();
    std::filesystem::remove(game_default_save_path());
    auto g = on_screen(SCREEN_TITLE, 1);
    std::strcpy(g->notice, "NO WORLD FOUND");
    g->notice_timer = 2.0f;
    Canvas c;
    draw(c, *g);
    c.expect({{LOAD_X, LOAD_Y, DIM}, {210, 212, rgb(31, 57, 68)}, {208, 220, EDGE},  // still highlighted
              {267, 186, LABEL}, {210, 178, rgb(15, 21, 38)}, {279, 286, rgb(255, 122, 122)}});
}

TEST(TitleScreen, LoadWorldLightsUpOnceASaveExists) {
    scratch_home();
    auto world = blank_game();
    game_new(world.get(), 7, "SAVED");
    ASSERT_TRUE(game_save(world.get(), game_default_save_path()));
    Canvas selected, other;
    draw(selected, *on_screen(SCREEN_TITLE, 1));
    draw(other, *on_screen(SCREEN_TITLE, 0));
    EXPECT_EQ(selected.at(LOAD_X, LOAD_Y), HIGHLIGHT);
    EXPECT_EQ(other.at(LOAD_X, LOAD_Y), LABEL);
    std::filesystem::remove(game_default_save_path());
}

TEST(CreateForm, AllTenSeedDigitsFocusAndAnUnclippedLongName) {
    auto g = on_screen(SCREEN_CREATE);
    g->seed = 4294967295u;
    g->form_focus = 1;
    std::memset(g->name, 'W', 31);
    Canvas c;
    draw(c, *g);
    // Seed box focused; '4' and the tenth digit '5' at scale 2; the name runs past x = 503.
    c.expect({{137, 215, HIGHLIGHT}, {137, 150, rgb(58, 76, 91)}, {154, 210, LABEL}, {256, 210, LABEL},
              {508, 149, LABEL}});
    EXPECT_EQ(c.count(268, 210, 24, 14, LABEL), 0);
}

TEST(InventoryOverlay, SlotsCountsNamesAndRecipeRows) {
    auto g = on_screen(SCREEN_INVENTORY);
    g->player.inventory[2] = {TILE_DIRT, 60};
    g->player.selected = 3;
    g->craft_cursor = 1;
    Canvas c;
    draw(c, *g);
    // Selected slot 3; "60" ends at the slot's x + 28; "EMPTY" for the empty selection.
    c.expect({{150, 90, HIGHLIGHT}, {48, 90, rgb(55, 70, 85)}, {134, 97, LABEL}, {48, 246, ACCENT}});
    // Row 1 is outlined, row 0 not; "WOOD + COAL" shows D, three blank cells, C.
    c.expect({{430, 120, EDGE}, {430, 85, rgb(10, 16, 27)}, {441, 112, HIGHLIGHT}, {456, 123, PANEL_HINT},
              {481, 123, PANEL_HINT}});
    EXPECT_EQ(c.count(462, 123, 18, 7, PANEL_HINT), 0);
}

TEST(PauseOverlay, HighlightsTheCursorItem) {
    Canvas c;
    draw(c, *on_screen(SCREEN_PAUSE, 1));
    c.expect({{280, 195, HIGHLIGHT}, {220, 200, EDGE}, {303, 161, LABEL}, {220, 165, rgb(51, 66, 83)}});
}

}  // namespace
