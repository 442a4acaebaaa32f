// Random play for a long time: random SDL events (keys, text, clicks anywhere,
// wheel, resizes, focus changes, quit requests) through SDL's queue and the real
// event handler, random held keys, pointer and frame times, then the frame step;
// the world's promises are checked after every frame. TALVEN_SOAK_FRAMES sets the
// length (`make soak` runs ten million).

#include <cmath>
#include <cstring>
#include <random>

#include "app/app_support.h"
#include "app/frame_step.h"
#include "app/screens.h"
#include "core/tiles.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

constexpr SDL_Keycode KEYS[] = {
    SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT, SDLK_w, SDLK_s, SDLK_a, SDLK_d, SDLK_e, SDLK_c,
    SDLK_RETURN, SDLK_SPACE, SDLK_ESCAPE, SDLK_TAB, SDLK_BACKSPACE, SDLK_0, SDLK_1, SDLK_5, SDLK_9, SDLK_F11,
};
constexpr Uint32 KINDS[] = {SDL_KEYDOWN, SDL_KEYDOWN, SDL_KEYDOWN, SDL_KEYDOWN, SDL_TEXTINPUT,
                            SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONDOWN, SDL_MOUSEWHEEL, SDL_WINDOWEVENT, SDL_QUIT};

// Random bytes under one of the kinds the game meets: text that may fill its
// buffer unterminated, clicks and wheel steps of any size, keys mostly ones the
// game knows and mostly first presses, window events of every kind.
SDL_Event random_event(std::mt19937& rng) {
    std::uint32_t words[sizeof(SDL_Event) / 4];
    for (std::uint32_t& w : words) w = rng();
    SDL_Event e;
    std::memcpy(&e, words, sizeof e);
    e.type = KINDS[rng() % std::size(KINDS)];
    if (e.type == SDL_KEYDOWN) {
        e.key.repeat = rng() % 4 == 0;
        if (rng() % 10 != 0) e.key.keysym.sym = KEYS[rng() % std::size(KEYS)];
    }
    if (e.type == SDL_MOUSEBUTTONDOWN) e.button.button = static_cast<Uint8>(1 + rng() % 5);
    if (e.type == SDL_WINDOWEVENT) e.window.event %= SDL_WINDOWEVENT_TAKE_FOCUS + 1;
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
    std::mt19937 rng(20261124);
    long playing = 0;
    std::uint32_t held = 0;
    for (long frame = 0; frame < frames; ++frame) {
        for (int n = static_cast<int>(rng() % 33) - 30; n > 0; --n) {
            SDL_Event e = random_event(rng);
            if (e.type == SDL_WINDOWEVENT && e.window.event == SDL_WINDOWEVENT_RESIZED)
                SDL_SetWindowSize(window, 1 + static_cast<int>(rng() % 5000), 1 + static_cast<int>(rng() % 5000));
            SDL_PushEvent(&e);
        }
        frame_read_input(g.get(), window, &in, nullptr);
        // The dummy driver has no keyboard or mouse: the held keys and the pointer
        // are drawn at random and held for a while, the pointer anywhere on or off
        // a window of the current size, or within reach of the player.
        if (rng() % 21 == 0) held = rng();
        in.left = held & 1, in.right = held >> 1 & 1, in.jump_held = held >> 2 & 1, in.down = held >> 3 & 1;
        in.use_held = held >> 4 & 1;
        if (held >> 8 & 1) {
            in.mouse_x = static_cast<int>(g->player.x - g->camera_x) + static_cast<int>(held >> 9 & 127) - 60;
            in.mouse_y = static_cast<int>(g->player.y - g->camera_y) + static_cast<int>(held >> 16 & 127) - 60;
        } else {
            int w = 0, h = 0;
            SDL_GetWindowSize(window, &w, &h);
            window_to_view(w, h, static_cast<int>(held >> 9 & 8191) - 2000, static_cast<int>(held >> 20) - 2000,
                           &in.mouse_x, &in.mouse_y);
        }
        const float dt = rng() % 8 == 0 ? static_cast<float>(rng() % 201) / 1000.0f : 1.0f / 60.0f;

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
