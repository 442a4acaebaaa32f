#include "render/view.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "core/geometry.h"
#include "core/hash.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "render/draw.h"
#include "render/icons.h"
#include "render/menus.h"
#include "render/notice.h"

namespace {

constexpr float TAU = 6.2831855f;
constexpr std::uint32_t HUD_TEXT = 0xFFEBF1EEu;
constexpr std::uint32_t HINT_TEXT = 0xFFA29B8Du;

// Float to pixel, truncating toward zero. Values are held within +-2^24 so a
// wild position can never overflow the integer sums that follow; anything
// that far out is off screen either way.
constexpr float PX_LIMIT = 16777216.0f;
int to_px(float v) {
    if (std::isnan(v)) return 0;
    return static_cast<int>(std::clamp(v, -PX_LIMIT, PX_LIMIT));
}
int floor_px(float v) { return to_px(std::floor(v)); }

// Light level of the sky for the time of day, never fully dark.
float daylight(float t) {
    const float l = (std::sin((t - 0.22f) * TAU) + 1.0f) * 0.5f;
    return std::clamp(l, 0.08f, 1.0f);
}

std::uint8_t channel(float v) { return static_cast<std::uint8_t>(to_px(v)); }

struct Camera {
    int cx, cy;  // the camera's top-left, floored to whole pixels
};

struct TileRange {
    int col0, col1, row0, row1;  // inclusive; empty when first > last
};

// Only the tiles under the view, clamped to the grid before any is read.
TileRange visible_tiles(Camera cam) {
    return {std::max(0, cam.cx / TILE_SIZE), std::min(WORLD_W - 1, (cam.cx + VIEW_W) / TILE_SIZE),
            std::max(0, cam.cy / TILE_SIZE), std::min(WORLD_H - 1, (cam.cy + VIEW_H) / TILE_SIZE)};
}

// Below `bottom` the hills cover the sky across the whole view.
void draw_sky(SDL_Renderer* r, float light, int bottom) {
    fill(r, 0, 0, VIEW_W, bottom,
         rgba(channel(light * 93.0f + 16.0f), channel(light * 151.0f + 17.0f), channel(light * 176.0f + 41.0f)));
}

// The sun and moon share one path across the sky; only the colour tells them apart.
void draw_sun_or_moon(SDL_Renderer* r, float t) {
    const float s = std::sin(t * TAU);
    const float c = std::cos(t * TAU);
    const int x0 = to_px((c * -0.46f + 0.5f) * 640.0f);
    const int y0 = to_px(s * 105.0f + 50.0f);
    const bool moon = 0.55f < t && t < 0.93f;
    const std::uint32_t colour = moon ? rgba(202, 224, 240) : rgba(255, 229, 124);
    fill(r, x0 - 8, y0 - 8, 16, 16, colour);
    fill(r, x0 - 11, y0 - 4, 22, 8, colour);
    fill(r, x0 - 4, y0 - 11, 8, 22, colour);
}

struct HillStep {
    int dx, top, width;
};

struct HillLayer {
    float parallax;
    int period;
    int first_base;
    int count;
    std::uint32_t colour;
    const HillStep* steps;
    std::size_t step_count;
    int bottom;  // where the layer in front covers the whole view's width
};

// Stepped hills, widest at the bottom. The far layer's last step has no width
// and so draws nothing.
constexpr HillStep FAR_STEPS[] = {{-30, 190, 120}, {-20, 181, 100}, {-10, 172, 80}, {0, 163, 60},
                                  {10, 154, 40},   {20, 145, 20},   {30, 136, 0}};
constexpr HillStep NEAR_STEPS[] = {{-40, 230, 92}, {-32, 222, 76}, {-24, 214, 60},
                                   {-16, 206, 44}, {-8, 198, 28},  {0, 190, 12}};
constexpr HillLayer HILLS[] = {
    {0.08f, 120, -90, 8, rgba(44, 82, 104), FAR_STEPS, std::size(FAR_STEPS), NEAR_STEPS[0].top},
    {0.16f, 92, -52, 10, rgba(47, 91, 80), NEAR_STEPS, std::size(NEAR_STEPS), VIEW_H},
};
// A widest step as wide as the layer's period leaves no gap between hills, so
// from its top down a layer hides everything behind it.
static_assert(HILLS[0].steps[0].width == HILLS[0].period && HILLS[1].steps[0].width == HILLS[1].period);
constexpr int SKY_BOTTOM = FAR_STEPS[0].top;

// Hills scroll sideways slower than the world and never move vertically. Each
// step is drawn only down to the top of the wider step beneath it, which paints
// the rest in the same colour; the widest step reaches the layer's bottom.
void draw_hills(SDL_Renderer* r, const HillLayer& layer, float camera_x) {
    const int o = to_px(camera_x * layer.parallax);
    const int shift = o - (o / layer.period) * layer.period;
    for (int j = 0; j < layer.count; ++j) {
        const int b = layer.first_base - shift + layer.period * j;
        int bottom = layer.bottom;
        for (std::size_t k = 0; k < layer.step_count; ++k) {
            const HillStep& st = layer.steps[k];
            fill(r, b + st.dx, st.top, st.width, bottom - st.top, layer.colour);
            bottom = st.top;
        }
    }
}

void draw_tiles(SDL_Renderer* r, const Game& g, Camera cam, TileRange range) {
    for (int row = range.row0; row <= range.row1; ++row)
        for (int col = range.col0; col <= range.col1; ++col) {
            const std::uint8_t id = tile_at(g, col, row);
            if (id == TILE_EMPTY) continue;
            draw_item(r, id, col * TILE_SIZE - cam.cx, row * TILE_SIZE - cam.cy, 16,
                      world_hash(g.seed, static_cast<std::uint32_t>(col), static_cast<std::uint32_t>(row)));
        }
}

// A drop's variation follows the tick, so a dropped ore glitters.
void draw_drops(SDL_Renderer* r, const Game& g, Camera cam) {
    const auto tick32 = static_cast<std::uint32_t>(g.tick);
    for (std::uint32_t i = 0; i < MAX_DROPS; ++i) {
        const Drop& d = g.drops[i];
        if (!d.active) continue;
        draw_item(r, static_cast<std::int32_t>(d.item), to_px(d.x) - cam.cx, to_px(d.y) - cam.cy, 8,
                  world_hash(g.seed, i, tick32));
    }
}

struct CreatureLook {
    std::uint32_t shadow, body;
};
constexpr CreatureLook CREATURE_LOOKS[2] = {
    {rgba(42, 91, 70), rgba(96, 180, 118)},
    {rgba(94, 37, 60), rgba(175, 74, 92)},
};

// Creatures on the ground squash in a slow rhythm; the eyes stay put.
void draw_creatures(SDL_Renderer* r, const Game& g, Camera cam) {
    for (const Creature& c : g.creatures) {
        if (!c.alive) continue;
        const int b = c.on_ground ? static_cast<int>((g.tick / 14) % 2) : 0;
        const int sx = to_px(c.x) - cam.cx;
        const int sy = to_px(c.y) - cam.cy;
        const CreatureLook& look = CREATURE_LOOKS[c.kind == 0 ? 0 : 1];
        fill(r, sx + 1, sy + b + 3, 12, 10 - b, look.shadow);
        fill(r, sx + 2, sy + b + 2, 10, 10 - b, look.body);
        fill(r, sx + 3, sy + 6, 2, 2, rgba(244, 237, 211));
        fill(r, sx + 9, sy + 6, 2, 2, rgba(244, 237, 211));
        fill(r, c.dir < 1 ? sx + 4 : sx + 9, sy + 7, 1, 1, rgba(28, 25, 33));
    }
}

struct SpritePiece {
    int dx, dy, w, h;
    std::uint32_t colour;
};

constexpr std::uint32_t PLAYER_DARK = rgba(37, 31, 60);
constexpr SpritePiece PLAYER_PIECES[] = {
    {2, 1, 8, 8, PLAYER_DARK},            // head outline
    {3, 2, 7, 7, rgba(232, 184, 142)},    // face
    {1, 7, 10, 15, rgba(71, 54, 100)},    // body
    {0, 12, 2, 8, PLAYER_DARK},           // left arm
    {10, 12, 2, 8, PLAYER_DARK},          // right arm
    {2, 21, 3, 5, PLAYER_DARK},           // left leg
    {7, 21, 3, 5, PLAYER_DARK},           // right leg
};

// While hurt the player blinks, hidden on every other 1/18 s.
bool player_blinked_out(const Player& p) { return p.hurt_timer > 0.0f && (to_px(p.hurt_timer * 18.0f) & 1) != 0; }

void draw_player(SDL_Renderer* r, const Game& g, Camera cam) {
    const Player& p = g.player;
    if (player_blinked_out(p)) return;
    const bool walking = p.on_ground && std::fabs(p.vx) > 10.0f;
    const int bob = walking ? static_cast<int>((g.tick / 5) % 2) : 0;
    const int px = to_px(p.x) - cam.cx;
    const int py = to_px(p.y) - cam.cy + bob;
    for (const SpritePiece& s : PLAYER_PIECES) fill(r, px + s.dx, py + s.dy, s.w, s.h, s.colour);
    fill(r, p.facing < 1 ? px + 2 : px + 8, py + 4, 2, 2, rgba(35, 29, 41));
    fill(r, px + 5, py + 12, 3, 3, rgba(111, 244, 204));
}

// One dimming layer for the whole night; torches are drawn again above it. Not
// under `hidden`, which an overlay paints over.
void draw_darkness(SDL_Renderer* r, float light, std::span<const SDL_Rect> hidden) {
    const auto alpha = static_cast<std::uint8_t>(to_px((1.0f - light) * 145.0f) & 255);
    fill_around(r, SDL_Rect{0, 0, VIEW_W, VIEW_H}, hidden, rgba(11, 12, 31, alpha));
}

void draw_torch_glow(SDL_Renderer* r, const Game& g, Camera cam, TileRange range) {
    for (int row = range.row0; row <= range.row1; ++row)
        for (int col = range.col0; col <= range.col1; ++col) {
            if (tile_at(g, col, row) != TILE_TORCH) continue;
            const int x = col * TILE_SIZE - cam.cx;
            const int y = row * TILE_SIZE - cam.cy;
            fill(r, x - 18, y - 18, 52, 52, rgba(255, 193, 76, 24));
            draw_item(r, TILE_TORCH, x, y, 16, 0);
        }
}

// The outline follows the pointer everywhere; cracks only over a real tile
// while mining work is under way.
void draw_pointed_tile(SDL_Renderer* r, const Game& g, Camera cam, const FrameInput& in) {
    const int tx = tile_under(g.camera_x, in.mouse_x);
    const int ty = tile_under(g.camera_y, in.mouse_y);
    const int x = tx * TILE_SIZE - cam.cx;
    const int y = ty * TILE_SIZE - cam.cy;
    outline(r, x, y, 16, 16, rgba(255, 244, 171));
    const float progress = g.player.mine_progress;
    if (!in_grid(tx, ty) || !(progress > 0.0f)) return;
    const float f = std::min(progress / tile_hardness(tile_at(g, tx, ty)), 1.0f);
    const int cracks = to_px(f * 5.0f);
    set_colour(r, rgba(255, 255, 255, 220));
    for (int k = 0; k < cracks; ++k) SDL_RenderDrawLine(r, x + 2 + 3 * k, y + 2, x + 5 + 2 * k, y + 14);
}

// Each heart stands for 2 health; an odd health leaves a left half heart. A
// max_hp below 1 (only a hand-edited record) counts to no heart at all.
void draw_hearts(SDL_Renderer* r, const Player& p) {
    const std::int64_t hearts = (static_cast<std::int64_t>(p.max_hp) + 1) / 2;
    for (int i = 0; i < hearts; ++i) {
        const int hx = 18 + 14 * i;
        if (hx - 8 >= VIEW_W) break;  // the rest would be off screen
        const std::uint32_t empty = rgba(72, 48, 62);
        fill(r, hx - 6, 11, 10, 9, empty);
        fill(r, hx - 8, 9, 4, 5, empty);
        fill(r, hx, 9, 4, 5, empty);
        const std::int64_t v = static_cast<std::int64_t>(p.hp) - 2 * i;
        if (v < 1) continue;
        fill(r, hx - 6, 11, v >= 2 ? 10 : 5, 9, rgba(224, 67, 83));
        fill(r, hx - 8, 9, 4, 5, rgba(240, 88, 96));
        if (v >= 2) fill(r, hx, 9, 4, 5, rgba(240, 88, 96));
    }
}

void draw_name_and_day(SDL_Renderer* r, const Game& g) {
    char line[64];
    std::snprintf(line, sizeof line, "%.*s  DAY %u", static_cast<int>(sizeof g.name), g.name, g.day);
    text(r, right_aligned_text_x(630, line), 10, line, HUD_TEXT, 1);
}

void draw_hotbar(SDL_Renderer* r, const Game& g) {
    const Player& p = g.player;
    for (std::uint32_t i = 0; i < HOTBAR_SLOTS; ++i) {
        const int x = 150 + 34 * static_cast<int>(i);
        box(r, {x, 322, 32, 32}, rgba(17, 22, 31, 220), i == p.selected ? rgba(255, 222, 95) : rgba(83, 100, 112));
        const InventorySlot& slot = p.inventory[i];
        if (slot.item == 0) continue;
        draw_item(r, slot.item, x + 8, 329, 16, world_hash(g.seed, i, slot.item));
        stack_count(r, x + 30, 345, slot.count, HUD_TEXT);
    }
    const InventorySlot* held = selected_slot(p);
    if (held != nullptr && held->item != 0) {
        const char* name = item_name(held->item);
        text(r, centred_text_x(name, 1), 311, name, HUD_TEXT, 1);
    }
}

void render_play_view(SDL_Renderer* r, const Game& g, const FrameInput& in) {
    const std::span<const SDL_Rect> hidden = overlay_boxes(g.screen);
    const float light = daylight(g.time_of_day);
    const Camera cam{floor_px(g.camera_x), floor_px(g.camera_y)};
    const TileRange range = visible_tiles(cam);

    draw_sky(r, light, SKY_BOTTOM);
    draw_sun_or_moon(r, g.time_of_day);
    for (const HillLayer& layer : HILLS) draw_hills(r, layer, g.camera_x);
    draw_tiles(r, g, cam, range);
    draw_drops(r, g, cam);
    draw_creatures(r, g, cam);
    draw_player(r, g, cam);
    draw_darkness(r, light, hidden);
    draw_torch_glow(r, g, cam, range);
    draw_pointed_tile(r, g, cam, in);
    draw_hearts(r, g.player);
    draw_name_and_day(r, g);
    draw_hotbar(r, g);
    text(r, 10, 29, "E INVENTORY  ESC PAUSE", HINT_TEXT, 1);
    draw_notice(r, &g, 48, HUD_TEXT);
}

}  // namespace

void render_game(SDL_Renderer* renderer, const Game* game, const FrameInput* input, bool save_exists) {
    switch (game->screen) {
        case SCREEN_TITLE: render_title(renderer, game, save_exists); return;
        case SCREEN_CREATE: render_create_form(renderer, game); return;
        default: break;
    }
    render_play_view(renderer, *game, *input);
    if (game->screen == SCREEN_INVENTORY) render_inventory_overlay(renderer, game);
    if (game->screen == SCREEN_PAUSE) render_pause_overlay(renderer, game);
}
