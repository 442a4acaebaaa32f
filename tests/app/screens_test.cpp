// The screen machine driven by synthetic SDL events through the real handler,
// with a hidden 1280 x 720 window on the dummy video driver.
#include "app/screens.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>

#include "save/save_path.h"

namespace {

class Screens : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        window = SDL_CreateWindow("TALVEN", 0, 0, 1280, 720, SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE);
        ASSERT_NE(window, nullptr) << SDL_GetError();
        g->running = 1;
    }
    void TearDown() override {
        SDL_DestroyWindow(window);
        SDL_Quit();
    }

    void send(SDL_Event e) { screens_handle_event(g.get(), window, &in, &e); }
    void keys(std::initializer_list<SDL_Keycode> ks, bool repeat = false) {
        for (const SDL_Keycode k : ks)
            send({.key = {SDL_KEYDOWN, 0, 0, SDL_PRESSED, repeat, 0, 0, {SDL_SCANCODE_UNKNOWN, k, 0, 0}}});
    }
    void type(std::string_view s) {
        SDL_Event e{.text = {SDL_TEXTINPUT, 0, 0, {}}};
        s.copy(e.text.text, sizeof e.text.text);
        send(e);
    }
    void click(Uint8 button, int x, int y) {
        send({.button = {SDL_MOUSEBUTTONDOWN, 0, 0, 0, button, SDL_PRESSED, 1, 0, x, y}});
    }
    void wheel(int x, int y) {
        send({.wheel = {SDL_MOUSEWHEEL, 0, 0, 0, x, y, SDL_MOUSEWHEEL_NORMAL, 0.0f, 0.0f, 0, 0}});
    }

    SDL_Window* window = nullptr;
    std::unique_ptr<Game> g = std::make_unique<Game>();
    FrameInput in{};
};

// Space jumps rather than choosing on the pause menu.
TEST_F(Screens, TitleIgnoresHeldKeysWhilePauseRepeatsThem) {
    keys({SDLK_UP});
    keys({SDLK_DOWN, SDLK_s, SDLK_RETURN, SDLK_SPACE}, true);
    EXPECT_EQ(g->menu_cursor, 2u);
    EXPECT_EQ(g->running, 1);

    game_new(g.get(), 77, "PLAY");
    keys({SDLK_ESCAPE});
    keys({SDLK_DOWN, SDLK_s}, true);
    EXPECT_EQ(g->menu_cursor, 2u);
    in = {};
    keys({SDLK_SPACE});
    EXPECT_EQ(g->running, 1);
    EXPECT_EQ(in.jump_pressed, 1);
    keys({SDLK_RETURN});
    EXPECT_EQ(g->running, 0);
    EXPECT_EQ(g->world_open, 1);  // left for the save at exit
}

// One key script through every screen change; SDLK_UNKNOWN, like any unlisted key, does nothing.
TEST_F(Screens, WalksEveryTransition) {
    keys({SDLK_DOWN, SDLK_RETURN});  // LOAD WORLD with nothing to load
    EXPECT_STREQ(g->notice, "NO WORLD FOUND");
    EXPECT_EQ(g->notice_timer, 2.0f);
    const struct {
        SDL_Keycode k[3];
        bool repeat;
        std::uint32_t screen;
    } script[] = {
        {{SDLK_UP, SDLK_RETURN}, false, SCREEN_CREATE},
        {{SDLK_TAB, SDLK_RIGHT, SDLK_ESCAPE}, false, SCREEN_TITLE},
        {{SDLK_SPACE}, false, SCREEN_CREATE},  // every visit starts from the same seed
        {{SDLK_UP, SDLK_RETURN}, false, SCREEN_TITLE},  // BACK
        {{SDLK_RETURN, SDLK_TAB, SDLK_RETURN}, false, SCREEN_CREATE},  // the seed and name rows ignore Return
        {{SDLK_LEFT, SDLK_UP, SDLK_RETURN}, false, SCREEN_CREATE},
        {{SDLK_DOWN, SDLK_DOWN, SDLK_RETURN}, false, SCREEN_PLAYING},  // CREATE WORLD
        {{SDLK_e}, false, SCREEN_INVENTORY},
        {{SDLK_ESCAPE}, false, SCREEN_PLAYING},
        {{SDLK_e, SDLK_e}, false, SCREEN_PLAYING},
        {{SDLK_ESCAPE}, false, SCREEN_PAUSE},
        {{SDLK_DOWN, SDLK_ESCAPE}, false, SCREEN_PLAYING},  // reopening starts again on RESUME
        {{SDLK_e}, false, SCREEN_INVENTORY},
        {{SDLK_ESCAPE, SDLK_e}, true, SCREEN_INVENTORY},
        {{SDLK_e, SDLK_ESCAPE, SDLK_DOWN}, false, SCREEN_PAUSE},
        {{SDLK_RETURN}, false, SCREEN_TITLE},  // SAVE AND TITLE
        {{SDLK_DOWN, SDLK_RETURN}, false, SCREEN_PLAYING},  // LOAD WORLD
    };
    for (const auto& step : script) {
        keys({step.k[0], step.k[1], step.k[2]}, step.repeat);
        EXPECT_EQ(g->screen, step.screen) << &step - script;
    }
    EXPECT_EQ(g->seed, 5010500u);
    const std::filesystem::path save = game_default_save_path();
    std::filesystem::remove(save);
    std::filesystem::create_directories(save / "blocker");  // saving now fails
    keys({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(g->screen, SCREEN_PAUSE);
    EXPECT_STREQ(g->notice, "SAVE FAILED - WORLD STILL OPEN");
    std::filesystem::remove_all(save);
    send({.type = SDL_QUIT});
    EXPECT_EQ(g->running, 0);
}

TEST_F(Screens, FormEditsNameBytesAndSeed) {
    keys({SDLK_RETURN});
    std::strcpy(g->name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123");  // 30 bytes
    for (const char* t : {"xy", "z", "y"}) type(t);          // whole events or nothing
    EXPECT_STREQ(g->name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123z");
    std::strcpy(g->name, "AB\xC3\xA9");
    keys({SDLK_BACKSPACE});
    EXPECT_STREQ(g->name, "AB\xC3");  // one byte of a two-byte character
    keys({SDLK_BACKSPACE, SDLK_BACKSPACE, SDLK_BACKSPACE}, true);
    type("ws");
    keys({SDLK_w, SDLK_s, SDLK_LEFT});  // letters here, not navigation; Left only on the seed row
    EXPECT_STREQ(g->name, "ws");
    EXPECT_EQ(g->seed, 5010501u);

    g->seed = 0;
    keys({SDLK_TAB, SDLK_LEFT, SDLK_BACKSPACE});
    type("z");
    EXPECT_EQ(g->seed, 4294967295u);
    EXPECT_STREQ(g->name, "ws");
    keys({SDLK_RIGHT, SDLK_RIGHT, SDLK_0}, true);
    EXPECT_EQ(g->seed, 1u);
}

// Only a step up goes back a slot; a step down or sideways goes on.
TEST_F(Screens, TheWheelStepsThroughTheHotbar) {
    game_new(g.get(), 77, "PLAY");
    const int turns[][3] = {{0, 1, 9}, {0, -1, 0}, {1, 0, 1}, {0, 3, 0}};  // x, y, slot after
    for (const auto& t : turns) {
        wheel(t[0], t[1]);
        EXPECT_EQ(g->player.selected, static_cast<std::uint32_t>(t[2])) << t[0] << "," << t[1];
    }
    g->screen = SCREEN_INVENTORY;
    wheel(0, 1);
    EXPECT_EQ(g->player.selected, 0u);
}

// 34 x 40 cells tile the grid without gaps.
TEST(SlotHitTest, ExactEdgesOfTheGrid) {
    const int cases[][3] = {{48, 76, 0},   {387, 235, 39}, {81, 115, 0},   {82, 76, 1},
                            {47, 100, -1}, {100, 236, -1}, {388, 100, -1}, {INT_MIN, INT_MAX, -1}};
    for (const auto& c : cases) EXPECT_EQ(inventory_slot_at(c[0], c[1]), c[2]) << c[0] << "," << c[1];
}

// Button positions arrive in view pixels; mapping them again through the 1280 x 720
// window would halve them. The sampled pointer arrives in window pixels.
TEST_F(Screens, OnlyTheSlotGridTakesClicksInViewPixels) {
    game_new(g.get(), 77, "PLAY");
    const struct {
        std::uint32_t screen;
        int x, y;  // a menu item, form button or hotbar slot 6
    } targets[] = {{SCREEN_TITLE, 320, 190}, {SCREEN_CREATE, 230, 290}, {SCREEN_PAUSE, 320, 160},
                   {SCREEN_PLAYING, 252, 80}};
    for (const auto& t : targets) {
        g->screen = t.screen;
        click(SDL_BUTTON_LEFT, t.x, t.y);
        EXPECT_EQ(g->screen, t.screen);
    }
    click(SDL_BUTTON_RIGHT, 0, 0);
    click(SDL_BUTTON_MIDDLE, INT_MAX, INT_MIN);
    EXPECT_EQ(in.use_pressed + in.place, 2);
    g->screen = SCREEN_INVENTORY;
    click(SDL_BUTTON_LEFT, INT_MIN, INT_MAX);
    click(SDL_BUTTON_RIGHT, 252, 80);
    EXPECT_EQ(g->player.selected, 0u);
    click(SDL_BUTTON_LEFT, 48 + 34 * 6 + 33, 115);  // corner of cell 6, outside the drawn slot
    EXPECT_EQ(g->player.selected, 6u);

    SDL_WarpMouseInWindow(window, 640, 360);
    screens_sample_input(g.get(), window, &in);
    EXPECT_EQ(std::pair(in.mouse_x, in.mouse_y), std::pair(320, 180));
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
    const int cases[][6] = {// window w, h, pointer x, y, view x, y; -0.5 and 0.5 both go to 0
                            {1280, 720, -1, 1, 0, 0}, {1280, 800, 1279, 799, 639, 379}, {1000, 360, 179, 0, -1, 0},
                            {1, 1, INT_MAX, INT_MIN, INT_MAX, INT_MIN}, {0, 0, 0, 0, 0, 0}};
    for (const auto& c : cases) {
        int x = 1, y = 1;
        window_to_view(c[0], c[1], c[2], c[3], &x, &y);
        EXPECT_EQ(std::pair(x, y), std::pair(c[4], c[5])) << c[0] << "x" << c[1];
    }
}

}  // namespace
