#include "app/screens.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <span>

#include "core/crafting.h"
#include "core/inventory.h"
#include "save/save_file.h"
#include "save/save_path.h"
#include "world/new_game.h"
#include "world/world_gen.h"

namespace {

using u32 = std::uint32_t;

constexpr float NO_WORLD_NOTICE_SECONDS = 2.0f;  // a little shorter than other notices
constexpr u32 RECIPES = RECIPE_COUNT;
constexpr u32 HOTBAR = HOTBAR_SLOTS;

// ---- actions behind the keys and menu items ----

// Cursors wrap at both ends; a step back is a step forward by one less than the count.
u32 next(u32 at, u32 count) { return (at + 1) % count; }
u32 previous(u32 at, u32 count) { return (at + count - 1) % count; }

void menu_up(Game* g) { g->menu_cursor = previous(g->menu_cursor, MENU_ITEM_COUNT); }
void menu_down(Game* g) { g->menu_cursor = next(g->menu_cursor, MENU_ITEM_COUNT); }
void form_next(Game* g) { g->form_focus = next(g->form_focus, FORM_ROW_COUNT); }
void form_prev(Game* g) { g->form_focus = previous(g->form_focus, FORM_ROW_COUNT); }
void craft_next(Game* g) { g->craft_cursor = next(g->craft_cursor, RECIPES); }
void craft_prev(Game* g) { g->craft_cursor = previous(g->craft_cursor, RECIPES); }
void to_title(Game* g) { g->screen = SCREEN_TITLE; }
void to_play(Game* g) { g->screen = SCREEN_PLAYING; }
void to_inventory(Game* g) { g->screen = SCREEN_INVENTORY; }
void craft_highlighted(Game* g) { craft_recipe(g, g->craft_cursor); }
void quit(Game* g) { g->running = 0; }

void to_pause(Game* g) {
    g->screen = SCREEN_PAUSE;
    g->menu_cursor = 0;
}

// The seed changes one step at a time and wraps through 0 both ways.
void seed_down(Game* g) {
    if (g->form_focus == FORM_ROW_SEED) g->seed -= 1;
}
void seed_up(Game* g) {
    if (g->form_focus == FORM_ROW_SEED) g->seed += 1;
}

// Removes one byte, so a multi-byte character goes in several presses.
void name_backspace(Game* g) {
    const std::size_t n = strnlen(g->name, NAME_SIZE);
    if (g->form_focus == FORM_ROW_NAME && n > 0) g->name[n - 1] = '\0';
}

// Every visit to the form starts from the same seed and name.
void open_create_form(Game* g) {
    g->screen = SCREEN_CREATE;
    g->form_focus = FORM_ROW_NAME;
    form_start_values(g);
}

void load_world(Game* g) {
    if (game_load(g, game_default_save_path())) return;
    std::snprintf(g->notice, sizeof g->notice, "%s", "NO WORLD FOUND");
    g->notice_timer = NO_WORLD_NOTICE_SECONDS;
}

// The generator reads the record's own name after it has been cleared, so the
// world gets the default name; only the seed carries over from the form.
void create_world(Game* g) { game_new(g, g->seed, g->name); }

void save_and_title(Game* g) {
    if (!game_save(g, game_default_save_path())) {
        game_notice(g, "SAVE FAILED - WORLD STILL OPEN");
        return;
    }
    g->screen = SCREEN_TITLE;
    g->menu_cursor = 0;
    g->world_open = 0;
}

void nothing(Game*) {}

using Action = void (*)(Game*);

constexpr Action TITLE_ITEMS[] = {open_create_form, load_world, quit};
constexpr Action FORM_ROWS[] = {nothing, nothing, create_world, to_title};
constexpr Action PAUSE_ITEMS[] = {to_play, save_and_title, quit};

void run_item(std::span<const Action> items, u32 index, Game* g) {
    if (index < items.size()) items[index](g);
}

// ---- key tables ----

enum class Repeat : std::uint8_t { Any, First };

struct KeyRule {
    SDL_Keycode first, last;  // a single key, or the digit row
    Repeat repeat;
    void (*act)(Game*, SDL_Keycode);
};

template <Action A>
void key(Game* g, SDL_Keycode) {
    A(g);
}

// 1..9 pick hotbar slots 0..8 and 0 picks slot 9, like the keys' order on the row.
void select_by_digit(Game* g, SDL_Keycode k) {
    g->player.selected = k == SDLK_0 ? HOTBAR - 1 : static_cast<u32>(k - SDLK_1);
}

constexpr KeyRule one(SDL_Keycode k, Repeat r, void (*act)(Game*, SDL_Keycode)) { return {k, k, r, act}; }
constexpr KeyRule DIGITS{SDLK_0, SDLK_9, Repeat::Any, select_by_digit};

// The title ignores held keys; the pause menu repeats them.
constexpr KeyRule TITLE_KEYS[] = {
    one(SDLK_UP, Repeat::First, key<menu_up>),       one(SDLK_w, Repeat::First, key<menu_up>),
    one(SDLK_DOWN, Repeat::First, key<menu_down>),   one(SDLK_s, Repeat::First, key<menu_down>),
    one(SDLK_RETURN, Repeat::First, key<on_enter>),  one(SDLK_SPACE, Repeat::First, key<on_enter>),
};

// W and S are letters here, typed into the name.
constexpr KeyRule FORM_KEYS[] = {
    one(SDLK_DOWN, Repeat::Any, key<form_next>),       one(SDLK_TAB, Repeat::Any, key<form_next>),
    one(SDLK_UP, Repeat::Any, key<form_prev>),         one(SDLK_ESCAPE, Repeat::Any, key<to_title>),
    one(SDLK_LEFT, Repeat::Any, key<seed_down>),       one(SDLK_RIGHT, Repeat::Any, key<seed_up>),
    one(SDLK_BACKSPACE, Repeat::Any, key<name_backspace>), one(SDLK_RETURN, Repeat::Any, key<on_enter>),
};

constexpr KeyRule PLAY_KEYS[] = {
    DIGITS,
    one(SDLK_e, Repeat::First, key<to_inventory>),
    one(SDLK_ESCAPE, Repeat::First, key<to_pause>),
};

constexpr KeyRule INVENTORY_KEYS[] = {
    DIGITS,
    one(SDLK_DOWN, Repeat::Any, key<craft_next>),    one(SDLK_s, Repeat::Any, key<craft_next>),
    one(SDLK_UP, Repeat::Any, key<craft_prev>),      one(SDLK_w, Repeat::Any, key<craft_prev>),
    one(SDLK_RETURN, Repeat::First, key<craft_highlighted>), one(SDLK_c, Repeat::First, key<craft_highlighted>),
    one(SDLK_e, Repeat::First, key<to_play>),        one(SDLK_ESCAPE, Repeat::First, key<to_play>),
};

// Space does not activate the pause menu: it is the jump key in play.
constexpr KeyRule PAUSE_KEYS[] = {
    one(SDLK_ESCAPE, Repeat::First, key<to_play>),
    one(SDLK_DOWN, Repeat::Any, key<menu_down>),     one(SDLK_s, Repeat::Any, key<menu_down>),
    one(SDLK_UP, Repeat::Any, key<menu_up>),         one(SDLK_w, Repeat::Any, key<menu_up>),
    one(SDLK_RETURN, Repeat::First, key<on_enter>),
};

// Indexed by screen id.
constexpr std::span<const KeyRule> SCREEN_KEYS[] = {TITLE_KEYS, FORM_KEYS, PLAY_KEYS, INVENTORY_KEYS, PAUSE_KEYS};

void run_key_rules(Game* g, SDL_Keycode k, bool repeat) {
    if (g->screen >= std::size(SCREEN_KEYS)) return;
    for (const KeyRule& rule : SCREEN_KEYS[g->screen]) {
        if (k < rule.first || k > rule.last) continue;
        if (rule.repeat == Repeat::Any || !repeat) rule.act(g, k);
        return;
    }
}

bool is_jump_key(SDL_Keycode k) { return k == SDLK_SPACE || k == SDLK_UP || k == SDLK_w; }

void toggle_fullscreen(SDL_Window* window) {
    const bool full = (SDL_GetWindowFlags(window) & (SDL_WINDOW_FULLSCREEN | SDL_WINDOW_FULLSCREEN_DESKTOP)) != 0;
    SDL_SetWindowFullscreen(window, full ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
}

void handle_key(Game* g, SDL_Window* window, FrameInput* in, const SDL_KeyboardEvent& k) {
    const bool repeat = k.repeat != 0;
    if (k.keysym.sym == SDLK_F11) {
        if (!repeat) toggle_fullscreen(window);
        return;
    }
    run_key_rules(g, k.keysym.sym, repeat);
    if (!repeat && is_jump_key(k.keysym.sym)) in->jump_pressed = 1;
}

// Whole text events are appended or dropped, never split; bytes are kept as
// they come. A text buffer without a terminator is too long by definition.
void handle_text(Game* g, const SDL_TextInputEvent& t) {
    if (g->screen != SCREEN_CREATE || g->form_focus != FORM_ROW_NAME) return;
    const std::size_t have = strnlen(g->name, NAME_SIZE);
    const std::size_t add = strnlen(t.text, sizeof t.text);
    if (have + add > NAME_SIZE - 1) return;
    std::memcpy(g->name + have, t.text, add);
    g->name[have + add] = '\0';
}

// Button positions already arrive in view pixels (the renderer's logical size
// maps them), unlike the sampled pointer.
void handle_button(Game* g, FrameInput* in, const SDL_MouseButtonEvent& b) {
    if (b.button == SDL_BUTTON_LEFT) {
        in->use_pressed = 1;
        if (g->screen != SCREEN_INVENTORY) return;
        const int slot = inventory_slot_at(b.x, b.y);
        if (slot >= 0) inventory_activate(&g->player, static_cast<u32>(slot));
    } else if (b.button == SDL_BUTTON_RIGHT) {
        in->place = 1;
    }
}

// Any wheel event that is not a step up, a sideways one included, moves to the
// next slot.
void handle_wheel(Game* g, const SDL_MouseWheelEvent& w) {
    if (g->screen != SCREEN_PLAYING) return;
    u32& sel = g->player.selected;
    sel = w.y >= 1 ? previous(sel, HOTBAR) : next(sel, HOTBAR);
}

int saturate_trunc(float v) {
    if (std::isnan(v)) return 0;
    if (v >= 2147483648.0f) return INT32_MAX;
    if (v < -2147483648.0f) return INT32_MIN;
    return static_cast<int>(v);
}

}  // namespace

void window_to_view(int w, int h, int px, int py, int* vx, int* vy) {
    const float fw = static_cast<float>(w);
    const float fh = static_cast<float>(h);
    float scale = fw / 640.0f;
    if (scale * 360.0f > fh) scale = fh / 360.0f;
    const float ox = (fw - 640.0f * scale) * 0.5f;
    const float oy = (fh - 360.0f * scale) * 0.5f;
    *vx = saturate_trunc((static_cast<float>(px) - ox) / scale);
    *vy = saturate_trunc((static_cast<float>(py) - oy) / scale);
}

void form_start_values(Game* game) {
    game->seed = FORM_START_SEED;
    std::snprintf(game->name, sizeof game->name, "%s", DEFAULT_WORLD_NAME);
}

void screens_handle_event(Game* game, SDL_Window* window, FrameInput* input, const SDL_Event* event) {
    switch (event->type) {
        case SDL_QUIT: game->running = 0; break;
        case SDL_KEYDOWN: handle_key(game, window, input, event->key); break;
        case SDL_TEXTINPUT: handle_text(game, event->text); break;
        case SDL_MOUSEBUTTONDOWN: handle_button(game, input, event->button); break;
        case SDL_MOUSEWHEEL: handle_wheel(game, event->wheel); break;
        default: break;
    }
}

void screens_sample_input(SDL_Window* window, FrameInput* input) {
    const Uint8* keys = SDL_GetKeyboardState(nullptr);
    input->left = keys[SDL_SCANCODE_A] || keys[SDL_SCANCODE_LEFT];
    input->right = keys[SDL_SCANCODE_D] || keys[SDL_SCANCODE_RIGHT];
    input->jump_held = keys[SDL_SCANCODE_SPACE] || keys[SDL_SCANCODE_W] || keys[SDL_SCANCODE_UP];
    input->down = keys[SDL_SCANCODE_S] || keys[SDL_SCANCODE_DOWN];

    int mx = 0;
    int my = 0;
    const Uint32 buttons = SDL_GetMouseState(&mx, &my);
    input->use_held = (buttons & SDL_BUTTON_LMASK) != 0;
    int w = 0;
    int h = 0;
    SDL_GetWindowSize(window, &w, &h);
    window_to_view(w, h, mx, my, &input->mouse_x, &input->mouse_y);
}

void on_enter(Game* game) {
    switch (game->screen) {
        case SCREEN_TITLE: run_item(TITLE_ITEMS, game->menu_cursor, game); break;
        case SCREEN_CREATE: run_item(FORM_ROWS, game->form_focus, game); break;
        case SCREEN_PAUSE: run_item(PAUSE_ITEMS, game->menu_cursor, game); break;
        default: break;
    }
}
