// Title, create-world form, inventory and pause screens, read back from a
// software canvas at the positions and colours the screens are laid out with.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "core/tiles.h"
#include "render/render_support.h"
#include "render/view.h"
#include "save/save_path.h"

namespace {

constexpr std::uint32_t LABEL = rgb(239, 238, 220);
constexpr std::uint32_t HIGHLIGHT = rgb(255, 211, 91);
constexpr std::uint32_t ACCENT = rgb(111, 244, 204);
constexpr std::uint32_t MENU_HINT = rgb(124, 139, 153);
constexpr std::uint32_t PANEL_HINT = rgb(127, 143, 153);
constexpr std::uint32_t FOCUS_EDGE = rgb(111, 244, 204);

const FrameInput NO_POINTER{};

std::unique_ptr<Game> on_screen(std::uint32_t screen) {
    auto g = blank_game();
    g->screen = screen;
    g->time_of_day = 0.47f;
    g->running = 1;
    return g;
}

void draw(Canvas& c, const Game& g) { render_game(c.renderer, &g, &NO_POINTER); }

// "LOAD WORLD" at scale 2 starts at 320 - (120 - 2) / 2 = 261, on the second button.
constexpr int LOAD_X = 261, LOAD_Y = 177 + 34 + 9;

TEST(TitleScreen, LoadWorldIsDimWithoutASaveEvenWhenHighlighted) {
    scratch_home();
    std::filesystem::remove(game_default_save_path());
    auto g = on_screen(SCREEN_TITLE);
    g->menu_cursor = 1;
    Canvas c;
    draw(c, *g);
    EXPECT_EQ(c.at(LOAD_X, LOAD_Y), MENU_HINT);
    EXPECT_EQ(c.at(210, 212), rgb(31, 57, 68));  // still the highlighted button
    EXPECT_EQ(c.at(208, 220), FOCUS_EDGE);
    EXPECT_EQ(c.at(267, 186), LABEL);  // "NEW WORLD", not highlighted
    EXPECT_EQ(c.at(210, 178), rgb(15, 21, 38));
}

TEST(TitleScreen, LoadWorldLightsUpOnceASaveExists) {
    if (!saving_available()) GTEST_SKIP() << "saving is still a stub in this build";
    auto world = blank_game();
    game_new(world.get(), 7, "SAVED");
    ASSERT_TRUE(game_save(world.get(), game_default_save_path()));
    auto g = on_screen(SCREEN_TITLE);
    g->menu_cursor = 1;
    Canvas selected;
    draw(selected, *g);
    EXPECT_EQ(selected.at(LOAD_X, LOAD_Y), HIGHLIGHT);
    g->menu_cursor = 0;
    Canvas other;
    draw(other, *g);
    EXPECT_EQ(other.at(LOAD_X, LOAD_Y), LABEL);
    std::filesystem::remove(game_default_save_path());
}

TEST(TitleScreen, NoticeShowsInTheFailureColourWhileItsTimerRuns) {
    auto g = on_screen(SCREEN_TITLE);
    std::strcpy(g->notice, "NO WORLD FOUND");
    g->notice_timer = 2.0f;
    Canvas c;
    draw(c, *g);
    EXPECT_EQ(c.at(279, 286), rgb(255, 122, 122));
    g->notice_timer = 0.0f;
    Canvas gone;
    draw(gone, *g);
    EXPECT_EQ(gone.count(270, 286, 100, 7, rgb(255, 122, 122)), 0);
}

TEST(CreateForm, ShowsTheSeedAndTheFocusedField) {
    auto g = on_screen(SCREEN_CREATE);
    g->seed = 4294967295u;
    g->form_focus = 1;
    std::strcpy(g->name, "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW");  // 31: runs past the box, unclipped
    Canvas c;
    draw(c, *g);
    EXPECT_EQ(c.at(137, 215), rgb(255, 211, 91));  // seed box focused
    EXPECT_EQ(c.at(137, 150), rgb(58, 76, 91));
    EXPECT_EQ(c.at(154, 210), LABEL);              // '4' at scale 2
    EXPECT_EQ(c.at(256, 210), LABEL);              // the tenth digit, '5'
    EXPECT_EQ(c.count(268, 210, 24, 14, LABEL), 0);
    EXPECT_EQ(c.at(148 + 12 * 30, 149), LABEL);

    g->seed = 0;
    g->form_focus = 2;
    Canvas zero;
    draw(zero, *g);
    EXPECT_EQ(zero.at(150, 210), LABEL);
    EXPECT_EQ(zero.at(196, 289), HIGHLIGHT);  // CREATE WORLD focused
    EXPECT_EQ(zero.at(165, 290), FOCUS_EDGE);
    EXPECT_EQ(zero.at(399, 289), LABEL);      // BACK
    EXPECT_EQ(zero.at(345, 290), rgb(58, 76, 91));
}

TEST(InventoryOverlay, SlotsCountsNamesAndRecipeRows) {
    auto g = on_screen(SCREEN_INVENTORY);
    g->player.inventory[2] = {TILE_DIRT, 60};
    g->player.selected = 3;
    g->craft_cursor = 1;
    Canvas c;
    draw(c, *g);
    EXPECT_EQ(c.at(150, 90), rgb(255, 211, 91));  // selected slot 3
    EXPECT_EQ(c.at(48, 90), rgb(55, 70, 85));
    EXPECT_EQ(c.at(134, 97), LABEL);              // "60" ends at the slot's x + 28
    EXPECT_EQ(c.at(48, 246), ACCENT);             // "EMPTY" for the empty selected slot

    const int row1 = 73 + 35;
    EXPECT_EQ(c.at(430, row1 + 12), FOCUS_EDGE);
    EXPECT_EQ(c.at(430, 73 + 12), rgb(10, 16, 27));  // unselected rows have no outline
    EXPECT_EQ(c.at(441, row1 + 4), HIGHLIGHT);       // "4 TORCH"
    // "WOOD + COAL": D in the fourth cell, then three blank cells, then C.
    EXPECT_EQ(c.at(456, row1 + 15), PANEL_HINT);
    EXPECT_EQ(c.count(462, row1 + 15, 18, 7, PANEL_HINT), 0);
    EXPECT_EQ(c.at(481, row1 + 15), PANEL_HINT);
}

TEST(PauseOverlay, HighlightsTheCursorItem) {
    auto g = on_screen(SCREEN_PAUSE);
    g->menu_cursor = 1;
    Canvas c;
    draw(c, *g);
    EXPECT_EQ(c.at(280, 195), HIGHLIGHT);  // "SAVE AND TITLE" centred at 279
    EXPECT_EQ(c.at(220, 200), FOCUS_EDGE);
    EXPECT_EQ(c.at(303, 161), LABEL);      // "RESUME" centred at 303
    EXPECT_EQ(c.at(220, 165), rgb(51, 66, 83));
}

}  // namespace
