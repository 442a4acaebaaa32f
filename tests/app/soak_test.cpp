// Random play for a long time: random SDL events (keys, text, clicks anywhere,
// wheel, resizes, focus changes, quit requests) through SDL's queue and the real
// event handler, random held keys, pointer and frame times, then the frame step;
// the world's promises are checked after every frame. TALVEN_SOAK_FRAMES sets the
// length (`make soak` runs ten million).

#include <cmath>
#include <random>

#include "app/app_support.h"
#include "app/frame_step.h"
#include "app/screens.h"
#include "core/tiles.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

using Rng = std::mt19937;

int pick(Rng& rng, int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); }

constexpr SDL_Keycode KEYS[] = {
    SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT, SDLK_w, SDLK_s, SDLK_a, SDLK_d, SDLK_e, SDLK_c,
    SDLK_RETURN, SDLK_SPACE, SDLK_ESCAPE, SDLK_TAB, SDLK_BACKSPACE, SDLK_0, SDLK_1, SDLK_5, SDLK_9, SDLK_F11,
};

// One random event of every kind the game may meet.
SDL_Event random_event(Rng& rng) {
    SDL_Event e{};
    switch (pick(rng, 0, 9)) {
        case 0: case 1: case 2: case 3:
            e.key.type = SDL_KEYDOWN;
            e.key.repeat = static_cast<Uint8>(pick(rng, 0, 3) == 0);
            e.key.keysym.sym = pick(rng, 0, 9) == 0 ? static_cast<SDL_Keycode>(rng()) : KEYS[pick(rng, 0, std::size(KEYS) - 1)];
            break;
        case 4:
            e.type = SDL_TEXTINPUT;  // any bytes, the buffer full and unterminated at times
            for (char& c : e.text.text) c = static_cast<char>(pick(rng, 1, 255));
            if (const int end = pick(rng, 0, sizeof e.text.text); end < static_cast<int>(sizeof e.text.text))
                e.text.text[end] = '\0';
            break;
        case 5: case 6:
            e.button = {SDL_MOUSEBUTTONDOWN, 0, 0, 0, static_cast<Uint8>(pick(rng, 1, 5)), SDL_PRESSED, 1, 0,
                        pick(rng, -2000, 4000), pick(rng, -2000, 4000)};
            break;
        case 7:
            e.type = SDL_MOUSEWHEEL;
            e.wheel.x = pick(rng, -3, 3);
            e.wheel.y = pick(rng, -3, 3);
            break;
        case 8:
            e.window = {SDL_WINDOWEVENT, 0, 0,
                        static_cast<Uint8>(pick(rng, SDL_WINDOWEVENT_SHOWN, SDL_WINDOWEVENT_TAKE_FOCUS)), 0, 0, 0,
                        pick(rng, 0, 5000), pick(rng, 0, 5000)};
            break;
        default: e.type = SDL_QUIT; break;
    }
    return e;
}

// NaN fails every comparison, so a position that is not finite is never inside.
bool inside(float x, float y, float w, float h) {
    return x >= 0.0f && x + w <= 8192.01f && y >= 0.0f && y + h <= 2560.01f;
}

// The first promise of an open world that `g` breaks, or null: what is not
// saved every frame, and what a save would refuse to load (hp, slots, clock,
// tiles) when `saved_too`; that scan of every tile costs as much as a frame.
const char* broken_promise(const Game& g, bool saved_too) {
    const Player& p = g.player;
    if (saved_too && !valid_loaded_game(&g)) return "a field no save may hold";
    if (!inside(p.x, p.y, 12.0f, 26.0f) || !std::isfinite(p.vx + p.vy + g.camera_x + g.camera_y))
        return "player or camera";
    if (g.screen > SCREEN_PAUSE) return "screen";
    for (const Creature& c : g.creatures)
        if (c.alive && (!inside(c.x, c.y, 14.0f, 14.0f) || !std::isfinite(c.vx + c.vy) || c.hp < 1 || c.hp > 7))
            return "creature";
    for (const Drop& d : g.drops)
        if (d.active && (!inside(d.x, d.y, 8.0f, 8.0f) || !std::isfinite(d.vx + d.vy) || !item_known(d.item)))
            return "drop";
    return nullptr;
}

using Soak = app_test::HiddenWindow;

TEST_F(Soak, RandomInputNeverBreaksTheWorld) {
    const char* env = std::getenv("TALVEN_SOAK_FRAMES");
    const long frames = env != nullptr && std::atol(env) > 0 ? std::atol(env) : 100000;
    game_new(g.get(), 1u, "SOAK");
    g->running = 1;
    Rng rng(20261124);
    long playing = 0;
    int held = 0, pointer[2] = {};
    for (long frame = 0; frame < frames; ++frame) {
        for (int n = pick(rng, -30, 2); n > 0; --n) {
            SDL_Event e = random_event(rng);
            if (e.type == SDL_WINDOWEVENT && e.window.event == SDL_WINDOWEVENT_RESIZED)
                SDL_SetWindowSize(window, e.window.data1, e.window.data2);
            SDL_PushEvent(&e);
        }
        frame_read_input(g.get(), window, &in, nullptr);
        // The dummy driver has no keyboard or mouse: the held keys and the pointer
        // are drawn at random and held for a while, the pointer anywhere on or off
        // a window of the current size, or within reach of the player.
        if (pick(rng, 0, 20) == 0) held = pick(rng, 0, 31);
        in.left = held & 1; in.right = (held >> 1) & 1; in.jump_held = (held >> 2) & 1;
        in.down = (held >> 3) & 1; in.use_held = (held >> 4) & 1;
        if (pick(rng, 0, 40) == 0) {
            int w = 0, h = 0;
            SDL_GetWindowSize(window, &w, &h);
            window_to_view(w, h, pick(rng, -w, 2 * w), pick(rng, -h, 2 * h), &pointer[0], &pointer[1]);
            if (rng() % 2 != 0) {
                pointer[0] = static_cast<int>(g->player.x - g->camera_x) + pick(rng, -40, 40);
                pointer[1] = static_cast<int>(g->player.y - g->camera_y) + pick(rng, -40, 60);
            }
        }
        in.mouse_x = pointer[0];
        in.mouse_y = pointer[1];
        const float dt = pick(rng, 0, 7) == 0 ? static_cast<float>(pick(rng, 0, 200)) / 1000.0f : 1.0f / 60.0f;

        frame_advance(g.get(), &in, dt);
        g->running = 1;  // a quit request ends a real run; here play goes on
        playing += g->screen == SCREEN_PLAYING && g->world_open;
        if (!g->world_open) continue;
        const char* broken = broken_promise(*g, frame % 8 == 0);
        ASSERT_EQ(nullptr, broken) << broken << " at frame " << frame;
    }
    EXPECT_GT(playing, frames / 4) << "too little of the run was play";
}

}  // namespace
