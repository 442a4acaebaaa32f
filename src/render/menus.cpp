#include "render/menus.h"

#include <array>
#include <cstdio>

#include "core/crafting.h"
#include "core/hash.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "render/draw.h"
#include "render/icons.h"
#include "render/layout.h"
#include "render/notice.h"

namespace {

constexpr std::uint32_t LABEL = 0xFFDCEEEFu;        // headings, labels, counts
constexpr std::uint32_t HIGHLIGHT = 0xFF5BD3FFu;    // the highlighted label
constexpr std::uint32_t ACCENT = 0xFFCCF46Fu;       // subtitle, item name, craft hint
constexpr std::uint32_t MENU_HINT = 0xFF998B7Cu;    // title and form hints, disabled item
constexpr std::uint32_t PANEL_HINT = 0xFF998F7Fu;   // inventory hints and cost lines
constexpr std::uint32_t FAILURE = 0xFF7A7AFFu;      // notices on the title

constexpr std::uint32_t FOCUS_EDGE = rgba(111, 244, 204);
constexpr std::uint32_t FIELD_FOCUS_EDGE = rgba(255, 211, 91);
constexpr std::uint32_t QUIET_EDGE = rgba(51, 66, 83);
constexpr std::uint32_t FORM_QUIET_EDGE = rgba(58, 76, 91);

constexpr const char* TITLE_ITEMS[MENU_ITEM_COUNT] = {"NEW WORLD", "LOAD WORLD", "QUIT"};
constexpr const char* PAUSE_ITEMS[MENU_ITEM_COUNT] = {"RESUME", "SAVE AND TITLE", "QUIT GAME"};
constexpr std::uint32_t TITLE_LOAD_ITEM = 1;

// The "+" in the costs has no glyph and shows as a gap, which reads fine.
struct RecipeLabel {
    const char* result;
    const char* cost;
};
constexpr RecipeLabel RECIPE_LABELS[RECIPE_COUNT] = {
    {"4 PLANK", "1 WOOD"},
    {"4 TORCH", "WOOD + COAL"},
    {"4 BRICK", "4 STONE"},
    {"WORKBENCH", "10 WOOD"},
    {"IRON PICK", "BENCH + 8 IRON + 4 WOOD"},
    {"IRON SWORD", "BENCH + 6 IRON + 2 WOOD"},
};

using Holes = std::span<const SDL_Rect>;

constexpr SDL_Rect recipe_row_box(std::uint32_t i) { return {430, 73 + 35 * static_cast<int>(i), 168, 29}; }
constexpr SDL_Rect pause_item_box(std::uint32_t i) { return {220, 154 + 34 * static_cast<int>(i), 200, 25}; }

// The boxes each overlay paints opaquely over its dim and panels, so nothing
// needs blending under them: the inventory's slots, then its recipe rows.
constexpr auto INVENTORY_BOXES = [] {
    std::array<SDL_Rect, INVENTORY_SLOTS + RECIPE_COUNT> all{};
    for (std::uint32_t i = 0; i < INVENTORY_SLOTS; ++i)
        all[i] = {pack_slot_x(i), pack_slot_y(i), PACK_SLOT_SIZE, PACK_SLOT_SIZE};
    for (std::uint32_t i = 0; i < RECIPE_COUNT; ++i) all[INVENTORY_SLOTS + i] = recipe_row_box(i);
    return all;
}();
constexpr auto PAUSE_BOXES = [] {
    std::array<SDL_Rect, MENU_ITEM_COUNT> all{};
    for (std::uint32_t i = 0; i < MENU_ITEM_COUNT; ++i) all[i] = pause_item_box(i);
    return all;
}();
static_assert(INVENTORY_BOXES.size() <= FILL_AROUND_MAX_HOLES);

void panel(SDL_Renderer* r, int x, int y, int w, int h, Holes holes = {}) {
    fill_around(r, SDL_Rect{x, y, w, h}, holes, rgba(15, 18, 31, 228));
    outline(r, x, y, w, h, FOCUS_EDGE);
    outline(r, x + 2, y + 2, w - 4, h - 4, rgba(48, 70, 92));
}

void dim_screen(SDL_Renderer* r, std::uint8_t alpha, Holes holes) {
    fill_around(r, SDL_Rect{0, 0, VIEW_W, VIEW_H}, holes, rgba(4, 7, 15, alpha));
}

constexpr std::uint32_t STARS = 80;
constexpr std::uint32_t BIG_STAR_ONE_IN = 4;  // one star in four is drawn 2 x 2

// A fixed star field: the same hash, the same sky on every run.
void draw_stars(SDL_Renderer* r) {
    for (std::uint32_t i = 0; i < STARS; ++i) {
        const std::uint32_t h = world_hash(501, i, 6);
        const int size = h % BIG_STAR_ONE_IN == 0 ? 2 : 1;
        fill(r, static_cast<int>(h % VIEW_W), static_cast<int>((h >> 10) % VIEW_H), size, size, rgba(86, 119, 143, 180));
    }
}

void draw_lamp(SDL_Renderer* r) {
    fill(r, 318, 132, 4, 29, rgba(114, 73, 42));
    fill(r, 312, 125, 16, 12, rgba(255, 173, 51));
    fill(r, 316, 121, 8, 15, rgba(255, 239, 135));
}

// LOAD WORLD stays dim while there is nothing to load, highlighted or not.
std::uint32_t title_label_colour(std::uint32_t item, bool selected, bool save_exists) {
    if (item == TITLE_LOAD_ITEM && !save_exists) return MENU_HINT;
    return selected ? HIGHLIGHT : LABEL;
}

void draw_title_menu(SDL_Renderer* r, std::uint32_t cursor, bool save_exists) {
    for (std::uint32_t i = 0; i < MENU_ITEM_COUNT; ++i) {
        const int y = 177 + 34 * static_cast<int>(i);
        const bool selected = i == cursor;
        box(r, {208, y, 224, 26}, selected ? rgba(31, 57, 68) : rgba(15, 21, 38), selected ? FOCUS_EDGE : QUIET_EDGE);
        text(r, centred_text_x(TITLE_ITEMS[i], 2), y + 9, TITLE_ITEMS[i], title_label_colour(i, selected, save_exists), 2);
    }
}

void form_field(SDL_Renderer* r, int y, const char* value, bool focused) {
    box(r, {137, y, 366, 30}, rgba(8, 12, 24), focused ? FIELD_FOCUS_EDGE : FORM_QUIET_EDGE);
    text(r, 148, y + 10, value, LABEL, 2);
}

void form_button(SDL_Renderer* r, int x, int label_x, const char* label, bool focused) {
    box(r, {x, 278, 130, 30}, rgba(18, 31, 43), focused ? FOCUS_EDGE : FORM_QUIET_EDGE);
    text(r, label_x, 289, label, focused ? HIGHLIGHT : LABEL, 1);
}

void draw_pack_slot(SDL_Renderer* r, const Game& g, std::uint32_t i) {
    const SDL_Rect& at = INVENTORY_BOXES[i];
    box(r, at, rgba(10, 16, 27), i == g.player.selected ? FIELD_FOCUS_EDGE : rgba(55, 70, 85));
    const InventorySlot& slot = g.player.inventory[i];
    if (slot.item == 0) return;
    draw_item(r, slot.item, at.x + 7, at.y + 6, 16, world_hash(g.seed, i, slot.item));
    stack_count(r, at.x + 28, at.y + 21, slot.count, LABEL);
}

// An empty hand is item 0, whose name is "EMPTY".
const char* selected_item_name(const Player& p) { return item_name(held_item(p)); }

void draw_recipe_row(SDL_Renderer* r, std::uint32_t i, bool selected) {
    const SDL_Rect at = recipe_row_box(i);
    box(r, at, selected ? rgba(31, 57, 68) : rgba(10, 16, 27), selected ? FOCUS_EDGE : 0);
    text(r, 438, at.y + 4, RECIPE_LABELS[i].result, selected ? HIGHLIGHT : LABEL, 1);
    text(r, 438, at.y + 15, RECIPE_LABELS[i].cost, PANEL_HINT, 1);
}

}  // namespace

std::span<const SDL_Rect> overlay_boxes(std::uint32_t screen) {
    if (screen == SCREEN_INVENTORY) return INVENTORY_BOXES;
    if (screen == SCREEN_PAUSE) return PAUSE_BOXES;
    return {};
}

void render_title(SDL_Renderer* renderer, const Game* game, bool save_exists) {
    fill(renderer, 0, 0, VIEW_W, VIEW_H, rgba(9, 12, 27));
    draw_stars(renderer);
    text(renderer, centred_text_x("TALVEN", 6), 54, "TALVEN", LABEL, 6);
    text(renderer, centred_text_x("GLIMWICK", 2), 108, "GLIMWICK", ACCENT, 2);
    draw_lamp(renderer);
    draw_title_menu(renderer, game->menu_cursor, save_exists);
    // Only failures reach the title as notices.
    draw_notice(renderer, game, 286, FAILURE);
    text(renderer, 243, 315, "DIG  BUILD  CRAFT  SURVIVE", MENU_HINT, 1);
    text(renderer, 234, 334, "ARROWS OR WASD   ENTER SELECT", MENU_HINT, 1);
}

void render_create_form(SDL_Renderer* renderer, const Game* game) {
    fill(renderer, 0, 0, VIEW_W, VIEW_H, rgba(13, 20, 34));
    text(renderer, 196, 38, "CREATE A WORLD", LABEL, 3);
    text(renderer, 201, 73, "EVERY SEED HIDES A DIFFERENT UNDERGROUND", MENU_HINT, 1);
    panel(renderer, 112, 103, 416, 154);

    char name[NAME_SIZE + 1];
    std::snprintf(name, sizeof name, "%.*s", NAME_SIZE, game->name);
    char seed[32];
    std::snprintf(seed, sizeof seed, "%u", game->seed);
    text(renderer, 137, 124, "WORLD NAME", MENU_HINT, 1);
    form_field(renderer, 139, name, game->form_focus == FORM_ROW_NAME);
    text(renderer, 137, 185, "SEED", MENU_HINT, 1);
    form_field(renderer, 200, seed, game->form_focus == FORM_ROW_SEED);

    form_button(renderer, 165, 195, "CREATE WORLD", game->form_focus == FORM_ROW_CREATE);
    form_button(renderer, 345, 399, "BACK", game->form_focus == FORM_ROW_BACK);
    text(renderer, 192, 332, "UP DOWN FIELD   TYPE NAME   LEFT RIGHT SEED", MENU_HINT, 1);
}

void render_inventory_overlay(SDL_Renderer* renderer, const Game* game) {
    const Holes boxes = INVENTORY_BOXES;
    dim_screen(renderer, 165, boxes);
    panel(renderer, 30, 31, 376, 282, boxes.first(INVENTORY_SLOTS));
    panel(renderer, 418, 31, 192, 282, boxes.last(RECIPE_COUNT));

    text(renderer, 48, 48, "PACK", LABEL, 2);
    for (std::uint32_t i = 0; i < INVENTORY_SLOTS; ++i) draw_pack_slot(renderer, *game, i);
    text(renderer, 48, 246, selected_item_name(game->player), ACCENT, 1);
    text(renderer, 48, 263, "CLICK SLOT OR 1-0", PANEL_HINT, 1);
    text(renderer, 48, 280, "E CLOSE INVENTORY", PANEL_HINT, 1);

    text(renderer, 436, 48, "CRAFT", LABEL, 2);
    for (std::uint32_t i = 0; i < RECIPE_COUNT; ++i) draw_recipe_row(renderer, i, i == game->craft_cursor);
    text(renderer, 436, 289, "C CRAFT", ACCENT, 1);
}

void render_pause_overlay(SDL_Renderer* renderer, const Game* game) {
    dim_screen(renderer, 190, PAUSE_BOXES);
    panel(renderer, 190, 80, 260, 202, PAUSE_BOXES);
    text(renderer, 268, 103, "PAUSED", LABEL, 3);
    for (std::uint32_t i = 0; i < MENU_ITEM_COUNT; ++i) {
        const SDL_Rect at = pause_item_box(i);
        const bool selected = i == game->menu_cursor;
        box(renderer, at, rgba(12, 21, 33), selected ? FOCUS_EDGE : QUIET_EDGE);
        text(renderer, centred_text_x(PAUSE_ITEMS[i], 1), at.y + 7, PAUSE_ITEMS[i], selected ? HIGHLIGHT : LABEL, 1);
    }
}
