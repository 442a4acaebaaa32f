// The screen machine driven by synthetic SDL events through the real handler,
// with a hidden window on the dummy video driver.
#include "app/screens.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <initializer_list>

#include "core/inventory.h"
#include "render/render_support.h"
#include "save/save_path.h"

namespace {

class Screens : public ::testing::Test {
protected:
    void SetUp() override {
        scratch_home();
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        window = SDL_CreateWindow("TALVEN", 0, 0, 1280, 720, SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE);
        ASSERT_NE(window, nullptr) << SDL_GetError();
        g->running = 1;
        g->seed = 5010501u;
        std::strcpy(g->name, "GLIMWICK WORLD");
    }
    void TearDown() override {
        SDL_DestroyWindow(window);
        SDL_Quit();
    }

    void send(SDL_Event e) { screens_handle_event(g.get(), window, &in, &e); }
    void keys(std::initializer_list<SDL_Keycode> ks, bool repeat = false) {
        for (const SDL_Keycode k : ks) {
            SDL_Event e{};
            e.key.type = SDL_KEYDOWN;
            e.key.keysym.sym = k;
            e.key.repeat = repeat ? 1 : 0;
            send(e);
        }
    }
    void type(const char* s) {
        SDL_Event e{};
        e.text.type = SDL_TEXTINPUT;
        std::strncpy(e.text.text, s, sizeof e.text.text);
        send(e);
    }
    void click(Uint8 button, int x, int y) {
        SDL_Event e{};
        e.button = {SDL_MOUSEBUTTONDOWN, 0, 0, 0, button, SDL_PRESSED, 1, 0, x, y};
        send(e);
    }
    void wheel(int x, int y) {
        SDL_Event e{};
        e.wheel.type = SDL_MOUSEWHEEL;
        e.wheel.x = x;
        e.wheel.y = y;
        send(e);
    }
    void playing() { game_new(g.get(), 77, "PLAY"); }

    SDL_Window* window = nullptr;
    std::unique_ptr<Game> g = blank_game();
    FrameInput in{};
};

TEST_F(Screens, TitleIgnoresHeldKeysWhilePauseRepeatsThemAndIgnoresSpace) {
    keys({SDLK_DOWN, SDLK_s, SDLK_DOWN});
    EXPECT_EQ(g->menu_cursor, 0u);
    keys({SDLK_UP});
    EXPECT_EQ(g->menu_cursor, 2u);
    frame_input_begin(&in);
    keys({SDLK_DOWN, SDLK_w, SDLK_RETURN, SDLK_SPACE}, true);
    EXPECT_EQ(g->menu_cursor, 2u);
    EXPECT_EQ(in.jump_pressed, 0);
    EXPECT_EQ(g->running, 1);

    playing();
    g->screen = SCREEN_PAUSE;
    keys({SDLK_DOWN, SDLK_s}, true);
    EXPECT_EQ(g->menu_cursor, 2u);
    keys({SDLK_SPACE});  // jumps, but does not choose QUIT GAME
    keys({SDLK_RETURN}, true);
    EXPECT_EQ(g->running, 1);
    EXPECT_EQ(in.jump_pressed, 1);
    keys({SDLK_RETURN});
    EXPECT_EQ(g->running, 0);
    EXPECT_EQ(g->world_open, 1);  // left for the save at exit
}

TEST_F(Screens, WalksEveryTransition) {
    keys({SDLK_RETURN, SDLK_TAB, SDLK_RIGHT, SDLK_ESCAPE});  // edits survive Escape...
    EXPECT_EQ(g->screen, SCREEN_TITLE);
    EXPECT_EQ(g->seed, 5010502u);
    keys({SDLK_SPACE});  // ...but not the next visit; the press's own text event follows
    type(" ");
    EXPECT_EQ(g->seed, 5010501u);
    EXPECT_STREQ(g->name, "GLIMWICK WORLD ");
    keys({SDLK_UP, SDLK_RETURN});  // BACK
    EXPECT_EQ(g->screen, SCREEN_TITLE);

    keys({SDLK_RETURN, SDLK_TAB, SDLK_LEFT, SDLK_RETURN, SDLK_UP, SDLK_RETURN});  // name and seed rows ignore Return
    EXPECT_EQ(g->screen, SCREEN_CREATE);
    type("MY WORLD");
    keys({SDLK_DOWN, SDLK_DOWN, SDLK_RETURN});  // CREATE WORLD keeps the seed, not the typed name
    ASSERT_EQ(g->screen, SCREEN_PLAYING);
    EXPECT_EQ(g->seed, 5010500u);
    EXPECT_STREQ(g->name, "GLIMWICK WORLD");

    struct Step {
        SDL_Keycode first, second;  // SDLK_UNKNOWN, like any unlisted key, does nothing
        std::uint32_t screen;
    };
    const Step steps[] = {
        {SDLK_e, SDLK_UNKNOWN, SCREEN_INVENTORY}, {SDLK_ESCAPE, SDLK_UNKNOWN, SCREEN_PLAYING},
        {SDLK_e, SDLK_e, SCREEN_PLAYING},         {SDLK_ESCAPE, SDLK_UNKNOWN, SCREEN_PAUSE},
        {SDLK_ESCAPE, SDLK_UNKNOWN, SCREEN_PLAYING}, {SDLK_ESCAPE, SDLK_RETURN, SCREEN_PLAYING},
    };
    for (const Step& step : steps) {
        g->menu_cursor = 2;  // opening the pause menu resets it
        keys({step.first, step.second});
        EXPECT_EQ(g->screen, step.screen);
    }
    keys({SDLK_e});
    keys({SDLK_ESCAPE, SDLK_e}, true);
    EXPECT_EQ(g->screen, SCREEN_INVENTORY);

    g->screen = SCREEN_TITLE;
    g->menu_cursor = 2;
    keys({SDLK_RETURN});
    EXPECT_EQ(g->running, 0);
    g->running = 1;
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    send(quit);
    EXPECT_EQ(g->running, 0);
}

// A directory where the save file belongs makes saving fail.
TEST_F(Screens, LoadAndSaveFailuresLeaveTheirScreensWithNotices) {
    const std::filesystem::path path = game_default_save_path();
    std::filesystem::remove_all(path);
    keys({SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(g->screen, SCREEN_TITLE);
    EXPECT_STREQ(g->notice, "NO WORLD FOUND");
    EXPECT_EQ(g->notice_timer, 2.0f);

    std::filesystem::create_directories(path / "blocker");
    playing();
    keys({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(g->screen, SCREEN_PAUSE);
    EXPECT_EQ(g->world_open, 1);
    EXPECT_STREQ(g->notice, "SAVE FAILED - WORLD STILL OPEN");
    std::filesystem::remove_all(path);
}

TEST_F(Screens, SaveAndTitleThenLoadWorld) {
    playing();
    keys({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(g->screen, SCREEN_TITLE);
    EXPECT_EQ(g->world_open, 0);
    keys({SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(g->screen, SCREEN_PLAYING);
    EXPECT_EQ(g->seed, 77u);
    std::filesystem::remove(game_default_save_path());
}

TEST_F(Screens, FormEditsNameBytesAndSeed) {
    g->screen = SCREEN_CREATE;
    std::strcpy(g->name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123");  // 30 bytes
    type("xy");  // whole events or nothing
    type("x");
    type("y");
    EXPECT_STREQ(g->name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123x");
    std::strcpy(g->name, "AB\xC3\xA9");
    keys({SDLK_BACKSPACE});
    EXPECT_STREQ(g->name, "AB\xC3");  // one byte of a two-byte character
    keys({SDLK_BACKSPACE, SDLK_BACKSPACE, SDLK_BACKSPACE}, true);
    EXPECT_STREQ(g->name, "");
    SDL_Event unterminated{};
    unterminated.text.type = SDL_TEXTINPUT;
    std::memset(unterminated.text.text, 'Q', sizeof unterminated.text.text);
    send(unterminated);
    type("ws");
    keys({SDLK_w, SDLK_s, SDLK_LEFT});  // letters here, not navigation; Left only on the seed row
    EXPECT_STREQ(g->name, "ws");
    EXPECT_EQ(g->form_focus, 0u);
    EXPECT_EQ(g->seed, 5010501u);

    g->seed = 0;
    keys({SDLK_TAB, SDLK_LEFT, SDLK_BACKSPACE});
    type("z");
    EXPECT_EQ(g->seed, 4294967295u);
    EXPECT_STREQ(g->name, "ws");
    keys({SDLK_RIGHT, SDLK_RIGHT, SDLK_0}, true);
    EXPECT_EQ(g->seed, 1u);
}

TEST_F(Screens, HotbarDigitsAndTheWheel) {
    playing();
    keys({SDLK_0});
    EXPECT_EQ(g->player.selected, 9u);
    keys({SDLK_1}, true);
    EXPECT_EQ(g->player.selected, 0u);
    const int wheel_steps[][3] = {{0, 1, 9}, {0, -1, 0}, {1, 0, 1}, {0, 3, 0}};  // x, y, slot after
    for (const auto& s : wheel_steps) {
        wheel(s[0], s[1]);
        EXPECT_EQ(g->player.selected, static_cast<std::uint32_t>(s[2])) << s[0] << "," << s[1];
    }
    g->screen = SCREEN_INVENTORY;
    wheel(0, 1);
    keys({SDLK_5, SDLK_DOWN}, true);
    keys({SDLK_w, SDLK_w});
    EXPECT_EQ(g->player.selected, 4u);
    EXPECT_EQ(g->craft_cursor, 5u);
}

TEST(SlotHitTest, CellsTileTheGridWithoutGaps) {
    const int cases[][3] = {{48, 76, 0},    {387, 235, 39}, {81, 115, 0}, {82, 76, 1},      {48, 116, 10},
                            {47, 100, -1}, {100, 236, -1}, {388, 100, -1}, {100, 75, -1}, {INT_MIN, INT_MAX, -1}};
    for (const auto& c : cases) EXPECT_EQ(inventory_slot_at(c[0], c[1]), c[2]) << c[0] << "," << c[1];
}

TEST_F(Screens, ClicksSetFlagsAndPickSlotsOnlyInTheInventory) {
    playing();
    click(SDL_BUTTON_LEFT, 48 + 34 * 6, 80);
    click(SDL_BUTTON_RIGHT, 0, 0);
    click(SDL_BUTTON_MIDDLE, INT_MAX, INT_MIN);
    EXPECT_EQ(in.use_pressed, 1);
    EXPECT_EQ(in.place, 1);
    EXPECT_EQ(g->player.selected, 0u);

    g->screen = SCREEN_INVENTORY;
    click(SDL_BUTTON_LEFT, INT_MIN, INT_MAX);
    click(SDL_BUTTON_RIGHT, 48 + 34 * 6, 80);
    EXPECT_EQ(g->player.selected, 0u);
    click(SDL_BUTTON_LEFT, 48 + 34 * 6 + 33, 115);  // corner of cell 6, outside the drawn slot
    EXPECT_EQ(g->player.selected, 6u);
}

TEST_F(Screens, F11TogglesFullscreenOncePerPress) {
    const Uint32 full = SDL_WINDOW_FULLSCREEN | SDL_WINDOW_FULLSCREEN_DESKTOP;
    keys({SDLK_F11});
    EXPECT_EQ(SDL_GetWindowFlags(window) & full, static_cast<Uint32>(SDL_WINDOW_FULLSCREEN_DESKTOP));
    keys({SDLK_F11}, true);
    EXPECT_NE(SDL_GetWindowFlags(window) & full, 0u);
    keys({SDLK_F11});
    EXPECT_EQ(SDL_GetWindowFlags(window) & full, 0u);
}

TEST(WindowToView, LetterboxAndTruncationTowardZero) {
    // window w, h, pointer x, y, view x, y
    const int cases[][6] = {
        {1280, 720, 640, 360, 320, 180}, {1280, 720, -1, 1, 0, 0},          // -0.5 and 0.5 both go to 0
        {1280, 800, 1279, 799, 639, 379}, {1000, 360, 179, 0, -1, 0},       // bars top and bottom, left and right
        {1000, 360, 819, 359, 639, 359}, {1, 1, INT_MAX, INT_MIN, INT_MAX, INT_MIN},  // absurd input saturates
        {0, 0, 0, 0, 0, 0},
    };
    for (const auto& c : cases) {
        int x = 1, y = 1;
        window_to_view(c[0], c[1], c[2], c[3], &x, &y);
        EXPECT_EQ(x, c[4]) << c[0] << "x" << c[1] << " at " << c[2];
        EXPECT_EQ(y, c[5]) << c[0] << "x" << c[1] << " at " << c[3];
    }
}

TEST_F(Screens, SampleMapsTheWindowPointerOnce) {
    SDL_WarpMouseInWindow(window, 640, 360);
    screens_sample_input(g.get(), window, &in);
    EXPECT_EQ(in.mouse_x, 320);
    EXPECT_EQ(in.mouse_y, 180);
}

}  // namespace
