// The screen machine driven by synthetic SDL events through the real handler,
// with a hidden 1280 x 720 window on the dummy video driver.
#include "app/screens.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "app/app_support.h"
#include "save/save_path.h"
#include "world/new_game.h"

namespace {

class Screens : public app_test::HiddenWindow {
protected:
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
    void click(Uint8 b, int x, int y) { send({.button = {SDL_MOUSEBUTTONDOWN, 0, 0, 0, b, SDL_PRESSED, 1, 0, x, y}}); }
};

// The inventory ignores held keys too. Space jumps rather than choosing on the
// pause menu. F11 is never repeated.
TEST_F(Screens, TitleIgnoresHeldKeysWhilePauseRepeatsThem) {
    keys({SDLK_UP, SDLK_F11});
    keys({SDLK_DOWN, SDLK_s, SDLK_RETURN, SDLK_SPACE, SDLK_F11}, true);
    EXPECT_EQ(std::pair(g->menu_cursor, +g->running), std::pair(2u, 1));
    EXPECT_EQ(SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP, Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP});
    keys({SDLK_F11});
    EXPECT_EQ(SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP, 0u);

    game_new(g.get(), 77, "PLAY");
    keys({SDLK_e});
    keys({SDLK_ESCAPE, SDLK_e}, true);
    EXPECT_EQ(g->screen, SCREEN_INVENTORY);
    keys({SDLK_ESCAPE, SDLK_ESCAPE});
    keys({SDLK_DOWN, SDLK_s}, true);
    EXPECT_EQ(g->menu_cursor, 2u);
    in = {};
    keys({SDLK_SPACE});
    EXPECT_EQ(std::pair(+g->running, +in.jump_pressed), std::pair(1, 1));
    keys({SDLK_RETURN});
    EXPECT_EQ(std::pair(+g->running, +g->world_open), std::pair(0, 1));  // saved at exit
}

// One key script through every screen change; SDLK_UNKNOWN, like any unlisted key,
// does nothing. Every visit to the form starts from the same seed; its seed and
// name rows ignore Return; reopening the pause menu starts again on RESUME.
TEST_F(Screens, WalksEveryTransition) {
    keys({SDLK_DOWN, SDLK_RETURN});  // LOAD WORLD with nothing to load
    EXPECT_EQ(std::pair(std::string_view(g->notice), g->notice_timer), std::pair(std::string_view("NO WORLD FOUND"), 2.0f));
    const struct { SDL_Keycode k[3]; std::uint32_t screen; } script[] = {
        {{SDLK_UP, SDLK_RETURN}, SCREEN_CREATE},    {{SDLK_TAB, SDLK_RIGHT, SDLK_ESCAPE}, SCREEN_TITLE},
        {{SDLK_SPACE}, SCREEN_CREATE},              {{SDLK_UP, SDLK_RETURN}, SCREEN_TITLE},  // BACK
        {{SDLK_RETURN, SDLK_TAB, SDLK_RETURN}, SCREEN_CREATE}, {{SDLK_LEFT, SDLK_UP, SDLK_RETURN}, SCREEN_CREATE},
        {{SDLK_DOWN, SDLK_DOWN, SDLK_RETURN}, SCREEN_PLAYING},  // CREATE WORLD
        {{SDLK_e}, SCREEN_INVENTORY},               {{SDLK_ESCAPE}, SCREEN_PLAYING},
        {{SDLK_e, SDLK_e}, SCREEN_PLAYING},         {{SDLK_ESCAPE}, SCREEN_PAUSE},
        {{SDLK_DOWN, SDLK_ESCAPE}, SCREEN_PLAYING}, {{SDLK_e}, SCREEN_INVENTORY},
        {{SDLK_e, SDLK_ESCAPE, SDLK_DOWN}, SCREEN_PAUSE},
        {{SDLK_RETURN}, SCREEN_TITLE},              // SAVE AND TITLE
        {{SDLK_DOWN, SDLK_RETURN}, SCREEN_PLAYING},  // LOAD WORLD
    };
    for (const auto& step : script) {
        keys({step.k[0], step.k[1], step.k[2]});
        EXPECT_EQ(g->screen, step.screen) << &step - script;
    }
    EXPECT_EQ(g->seed, 5010500u);
    std::filesystem::remove(game_default_save_path());
    std::filesystem::create_directory(game_default_save_path());  // saving now fails
    keys({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(std::pair(g->screen, std::string_view(g->notice)),
              std::pair(SCREEN_PAUSE, std::string_view("SAVE FAILED - WORLD STILL OPEN")));
    std::filesystem::remove(game_default_save_path());
    send({.type = SDL_QUIT});
    EXPECT_EQ(g->running, 0);
}

// Whole text events or nothing; Backspace takes one byte of a two-byte character.
// W and S are letters here, not navigation; Left and Right act on the seed row only.
TEST_F(Screens, FormEditsNameBytesAndSeed) {
    keys({SDLK_RETURN});
    std::strcpy(g->name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123");  // 30 bytes
    for (const char* t : {"xy", "z", "y"}) type(t);
    EXPECT_STREQ(g->name, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123z");
    std::strcpy(g->name, "AB\xC3\xA9");
    keys({SDLK_BACKSPACE});
    EXPECT_STREQ(g->name, "AB\xC3");
    keys({SDLK_BACKSPACE, SDLK_BACKSPACE, SDLK_BACKSPACE}, true);
    type("ws");
    keys({SDLK_w, SDLK_s, SDLK_LEFT});
    EXPECT_EQ(std::pair(g->seed, std::string_view(g->name)), std::pair(5010501u, std::string_view("ws")));

    g->seed = 0;
    keys({SDLK_TAB, SDLK_LEFT, SDLK_BACKSPACE});
    type("z");
    EXPECT_EQ(std::pair(g->seed, std::string_view(g->name)), std::pair(4294967295u, std::string_view("ws")));
    keys({SDLK_RIGHT, SDLK_RIGHT, SDLK_0}, true);
    EXPECT_EQ(g->seed, 1u);
}

// Only a step up goes back a slot; a step down or sideways goes on; only in play.
// Digits pick slots in the keys' order on the row, held ones too.
TEST_F(Screens, TheWheelAndDigitsPickHotbarSlots) {
    game_new(g.get(), 77, "PLAY");
    const int turns[][4] = {{SCREEN_PLAYING, 0, 1, 9}, {SCREEN_PLAYING, 0, -1, 0}, {SCREEN_PLAYING, 1, 0, 1},
                            {SCREEN_PLAYING, 0, 3, 0}, {SCREEN_INVENTORY, 0, 1, 0}};  // screen, x, y, slot after
    for (const auto& [screen, x, y, slot] : turns) {
        g->screen = static_cast<std::uint32_t>(screen);
        send({.wheel = {SDL_MOUSEWHEEL, 0, 0, 0, x, y, SDL_MOUSEWHEEL_NORMAL, 0.0f, 0.0f, 0, 0}});
        EXPECT_EQ(g->player.selected, static_cast<std::uint32_t>(slot)) << x << "," << y;
    }
    keys({SDLK_9});
    EXPECT_EQ(g->player.selected, 8u);
    keys({SDLK_0}, true);
    EXPECT_EQ(g->player.selected, 9u);
}

// The pointer is sampled in window pixels. SDL has no call that holds a key
// down, so its key state array is written directly.
TEST_F(Screens, SampledPointerAndHeldKeys) {
    SDL_WarpMouseInWindow(window, 640, 360);
    screens_sample_input(window, &in);
    EXPECT_EQ(std::pair(in.mouse_x, in.mouse_y), std::pair(320, 180));
    auto* held = const_cast<Uint8*>(SDL_GetKeyboardState(nullptr));
    const std::pair<SDL_Scancode, const char*> moves[] = {
        {SDL_SCANCODE_A, "left"},     {SDL_SCANCODE_LEFT, "left"}, {SDL_SCANCODE_D, "right"}, {SDL_SCANCODE_RIGHT, "right"},
        {SDL_SCANCODE_SPACE, "jump"}, {SDL_SCANCODE_W, "jump"},    {SDL_SCANCODE_UP, "jump"}, {SDL_SCANCODE_S, "down"},
        {SDL_SCANCODE_DOWN, "down"}};
    for (const auto& [key, move] : moves) {
        held[key] = 1;
        screens_sample_input(window, &in);
        held[key] = 0;
        EXPECT_EQ(std::string(in.left ? "left" : "") + (in.right ? "right" : "") + (in.jump_held ? "jump" : "") +
                      (in.down ? "down" : ""), move) << SDL_GetScancodeName(key);
    }
}

// 34 x 40 cells tile the grid without gaps.
TEST(SlotHitTest, ExactEdgesOfTheGrid) {
    const int cases[][3] = {{48, 76, 0},   {387, 235, 39}, {81, 115, 0},   {82, 76, 1},
                            {47, 100, -1}, {100, 236, -1}, {388, 100, -1}, {INT_MIN, INT_MAX, -1}};
    for (const auto& c : cases) EXPECT_EQ(inventory_slot_at(c[0], c[1]), c[2]) << c[0] << "," << c[1];
}

// Button positions arrive in view pixels; mapping them again through the 1280 x 720
// window would halve them. Menu items, form buttons and hotbar slot 6 take no clicks.
TEST_F(Screens, OnlyTheSlotGridTakesClicksInViewPixels) {
    game_new(g.get(), 77, "PLAY");
    const std::uint32_t targets[][3] = {
        {SCREEN_TITLE, 320, 190}, {SCREEN_CREATE, 230, 290}, {SCREEN_PAUSE, 320, 160}, {SCREEN_PLAYING, 252, 80}};
    for (const auto& [screen, x, y] : targets) {
        g->screen = screen;
        click(SDL_BUTTON_LEFT, static_cast<int>(x), static_cast<int>(y));
        EXPECT_EQ(g->screen, screen);
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
    click(SDL_BUTTON_LEFT, 48, 76);  // slot 0 is a slot too
    EXPECT_EQ(g->player.selected, 0u);
}

// Window w, h, pointer x, y, view x, y; -0.5 and 0.5 both go to 0.
TEST(WindowToView, LetterboxAndTruncationTowardZero) {
    const int cases[][6] = {{1280, 720, -1, 1, 0, 0}, {1280, 800, 1279, 799, 639, 379}, {1000, 360, 179, 0, -1, 0},
                            {1, 1, INT_MAX, INT_MIN, INT_MAX, INT_MIN}, {0, 0, 0, 0, 0, 0}};
    for (const auto& [w, h, px, py, vx, vy] : cases) {
        int x = 1, y = 1;
        window_to_view(w, h, px, py, &x, &y);
        EXPECT_EQ(std::pair(x, y), std::pair(vx, vy)) << w << "x" << h;
    }
}

}  // namespace
