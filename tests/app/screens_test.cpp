// The screen machine driven by synthetic SDL events through the real handler,
// with a hidden 1280 x 720 window on the dummy video driver.
#include "app/screens.h"

#include <array>
#include <climits>
#include <cstring>
#include <initializer_list>
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
        for (const SDL_Keycode k : ks) send(app_test::key_down(k, repeat));
    }
    void type(std::string_view s) {
        SDL_Event e{.text = {SDL_TEXTINPUT, 0, 0, {}}};
        s.copy(e.text.text, sizeof e.text.text);
        send(e);
    }
};

// The recorded screens tour (tests/demos) walks every screen by keys, held keys,
// clicks and the wheel; what a player's keyboard cannot reach is tested here.

// F11 switches desktop full screen on and off, and a held F11 does nothing.
TEST_F(Screens, F11TogglesFullScreenOncePerPress) {
    keys({SDLK_F11});
    keys({SDLK_F11}, true);
    EXPECT_EQ(SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP, Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP});
    keys({SDLK_F11});
    EXPECT_EQ(SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP, 0u);
}

// A save that cannot be written keeps the pause menu and the world open; quitting
// from the pause menu or the window ends the loop with the world open, to be saved.
TEST_F(Screens, AFailedSaveKeepsThePauseMenu) {
    game_new(g.get(), 77, "PLAY");
    std::filesystem::create_directory(game_default_save_path());  // saving now fails
    keys({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(std::pair(g->screen, std::string_view(g->notice)),
              std::pair(SCREEN_PAUSE, std::string_view("SAVE FAILED - WORLD STILL OPEN")));
    std::filesystem::remove(game_default_save_path());
    keys({SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(std::pair(+g->running, +g->world_open), std::pair(0, 1));
    g->running = 1;
    send({.type = SDL_QUIT});
    EXPECT_EQ(g->running, 0);
}

// The one-shot input that events leave for the frame: jump keys on a first press
// only, left click use, right click place, each cleared when the next frame
// begins. Demos record this input rather than derive it again, so only this test
// sees it.
TEST_F(Screens, EventsLeaveTheFramesOneShotInput) {
    game_new(g.get(), 77, "PLAY");
    const auto key = app_test::key_down;
    const auto button = [](Uint8 b) { return SDL_Event{.button = {SDL_MOUSEBUTTONDOWN, 0, 0, 0, b, SDL_PRESSED, 1, 0, 9, 9}}; };
    const std::pair<SDL_Event, std::array<int, 3>> cases[] = {  // jump_pressed, use_pressed, place
        {key(SDLK_SPACE, false), {1, 0, 0}}, {key(SDLK_UP, false), {1, 0, 0}}, {key(SDLK_w, false), {1, 0, 0}},
        {key(SDLK_SPACE, true), {0, 0, 0}},  {key(SDLK_d, false), {0, 0, 0}},  {button(SDL_BUTTON_LEFT), {0, 1, 0}},
        {button(SDL_BUTTON_RIGHT), {0, 0, 1}}, {button(SDL_BUTTON_MIDDLE), {0, 0, 0}},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        frame_input_begin(&in);
        send(cases[i].first);
        EXPECT_EQ(cases[i].second, (std::array<int, 3>{in.jump_pressed, in.use_pressed, in.place})) << "case " << i;
    }
}

// In play the digit keys pick hotbar slots: 1 the first, 0 the tenth.
TEST_F(Screens, DigitKeysPickHotbarSlots) {
    game_new(g.get(), 77, "PLAY");
    std::string picked;
    for (const SDL_Keycode k : {SDLK_1, SDLK_5, SDLK_9, SDLK_0}) {
        keys({k});
        picked += std::to_string(g->player.selected);
    }
    EXPECT_EQ("0489", picked);
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

// The pointer is sampled in window pixels. SDL has no call that holds a key
// down, so its key state array is written directly, one key at a time: exactly
// these nine move the player.
TEST_F(Screens, SampledPointerAndHeldKeys) {
    SDL_WarpMouseInWindow(window, 640, 360);
    screens_sample_input(window, &in);
    EXPECT_EQ(std::pair(in.mouse_x, in.mouse_y), std::pair(320, 180));
    auto* held = const_cast<Uint8*>(SDL_GetKeyboardState(nullptr));
    std::string moves;
    for (int key = 0; key < SDL_NUM_SCANCODES; ++key) {
        held[key] = 1;
        screens_sample_input(window, &in);
        held[key] = 0;
        const std::string move = std::string(in.left ? "left" : "") + (in.right ? "right" : "") +
                                 (in.jump_held ? "jump" : "") + (in.down ? "down" : "");
        if (!move.empty()) moves += std::string(SDL_GetScancodeName(static_cast<SDL_Scancode>(key))) + ":" + move + " ";
    }
    EXPECT_EQ("A:left D:right S:down W:jump Space:jump Right:right Left:left Down:down Up:jump ", moves);
}

// 34 x 40 cells tile the grid without gaps.
TEST(SlotHitTest, ExactEdgesOfTheGrid) {
    const int cases[][3] = {{48, 76, 0},   {387, 235, 39}, {81, 115, 0},   {82, 76, 1},
                            {47, 100, -1}, {100, 236, -1}, {388, 100, -1}, {INT_MIN, INT_MAX, -1}};
    for (const auto& c : cases) EXPECT_EQ(inventory_slot_at(c[0], c[1]), c[2]) << c[0] << "," << c[1];
}

// Window w, h, pointer x, y, view x, y; -0.5 and 0.5 both go to 0.
TEST(WindowToView, LetterboxAndTruncationTowardZero) {
    const int cases[][6] = {{1280, 720, -1, 1, 0, 0},          {1280, 800, 1279, 799, 639, 379},
                            {1000, 360, 179, 0, -1, 0},         {1, 1, INT_MAX, INT_MIN, INT_MAX, INT_MIN},
                            {640, 360, INT_MAX, 0, INT_MAX, 0}, {0, 0, 0, 0, 0, 0}};
    for (const auto& [w, h, px, py, vx, vy] : cases) {
        int x = 1, y = 1;
        window_to_view(w, h, px, py, &x, &y);
        EXPECT_EQ(std::pair(x, y), std::pair(vx, vy)) << w << "x" << h;
    }
}

}  // namespace
