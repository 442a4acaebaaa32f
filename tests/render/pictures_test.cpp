// Whole frames as a player sees them, each pinned by the digest of its 640 x 360
// picture. A changed digest means a changed picture: look at the written file.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "app/screenshot.h"
#include "core/tiles.h"
#include "render/render_support.h"
#include "world/new_game.h"

namespace {

constexpr std::uint32_t SEED = 5010501u;

// The world generated for SEED; (c, r) is the ground tile beside the spawn
// column, `ground` the top of that row in world pixels.
struct Scene {
    Game& g;
    int c, r;
    float ground;
};

void title_load_failed(Scene s) {
    s.g.screen = SCREEN_TITLE, s.g.menu_cursor = 1, s.g.notice_timer = 2.0f, std::strcpy(s.g.notice, "NO WORLD FOUND");
}
void title_after_save(Scene s) { s.g.screen = SCREEN_TITLE, s.g.notice_timer = 0.0f; }
void create_form(Scene s) { s.g.screen = SCREEN_CREATE, s.g.form_focus = 1, std::strcpy(s.g.name, "GLIMWICK WORLD"); }
void create_form_back(Scene s) { create_form(s), s.g.form_focus = 3; }

// Walking right (just past the 10 px/s a stride needs) past a small creature
// squashed on the ground and a large one in the air, beside drops of wood, brick
// (their lines at (2 * 8) / 3) and ore, while cracks spread over the tile under
// the pointer; 7 of 10 health left, and shown between two blinks of a hurt.
void play_by_day(Scene s) {
    Game& g = s.g;
    Player& p = g.player;
    // The sun's last instant. Tick 46 squashes creatures and bobs the player on rhythms
    // (every 14 and every 5 ticks) that a neighbouring period would not match.
    g.time_of_day = 0.55f, g.tick = 46;
    p.y = s.ground - 26.0f, p.on_ground = 1, p.vx = 11.0f, p.hp = 7, p.selected = 3, p.hurt_timer = 0.15f;
    p.mine_progress = tile_hardness(tile_at(g, s.c + 2, s.r)) * 0.7f;
    g.creatures[0] = {p.x - 120.0f, s.ground - 14.0f, 0, 0, 5, 0, -1, 0, 0, 1, 1};
    g.creatures[1] = {p.x + 150.0f, p.y - 40.0f, 0, 0, 9, 1, 1, 0, 0, 1, 0};
    const std::pair<float, std::uint8_t> drops[] = {{-40.0f, TILE_WOOD}, {-60.0f, TILE_STONE_BRICK}, {60.0f, TILE_IRON_ORE}};
    for (int i = 0; i < 3; ++i) g.drops[i] = {p.x + drops[i].first, s.ground - 8.0f, 0, 0, drops[i].second, 1, 60, 1};
}

// The same moment turned left and slowed to 10 px/s, which is standing: the eye
// moves and the walk's bob stops.
void play_facing_left(Scene s) { play_by_day(s), s.g.player.facing = -1, s.g.player.vx = -10.0f; }

// Deep night: a torch on the wall of a pocket dug under the surface, cracks
// over a soft tile while the work belongs to a harder one, and the player just
// hit and blinked out.
void play_by_night(Scene s) {
    Game& g = s.g;
    g.time_of_day = 0.93f;  // the sun is back from here, under full darkness
    g.notice_timer = 0.0f, g.player.hurt_timer = 0.5f, g.player.mine_progress = 1.0f;
    for (int c = s.c + 1; c <= s.c + 6; ++c)
        for (int r = s.r + 3; r <= s.r + 4; ++r) tile_at(g, c, r) = TILE_EMPTY;
    tile_at(g, s.c + 6, s.r + 3) = TILE_TORCH;
    tile_at(g, s.c + 20, s.r + 3) = TILE_TORCH;  // in the last column in view, all but off it: its glow shows
    g.creatures[0] = {g.player.x - 90.0f, g.player.y, 0, 0, 9, 1, -1, 0, 0, 1, 0};
}

// Every block in the second and third rows of the pack, every tool in the fourth,
// then an id the game does not know: a plain grey block.
void inventory(Scene s) {
    Game& g = s.g;
    g.screen = SCREEN_INVENTORY, g.time_of_day = 0.3f, g.craft_cursor = 4, g.player.selected = 13;
    for (std::uint16_t i = 1; i <= 16; ++i) g.player.inventory[9 + i] = {i, static_cast<std::uint16_t>(i * 66 - 65)};
    for (std::uint16_t i = 0; i < 4; ++i) g.player.inventory[30 + i] = {static_cast<std::uint16_t>(ITEM_WORN_PICK + i), 1};
    g.player.inventory[34] = {TILE_MAX + 1, 1};
}

// The camera in the world's bottom right corner: the last column and row are drawn.
void world_corner(Scene s) { s.g.camera_x = WORLD_W * 16 - VIEW_W, s.g.camera_y = WORLD_H * 16 - VIEW_H; }

void pause_menu(Scene s) { s.g.screen = SCREEN_PAUSE, s.g.menu_cursor = 1, s.g.time_of_day = 0.56f; }  // moonrise

struct Picture {
    const char* name;
    void (*set_up)(Scene);
    bool save_exists;
    int pointer_x, pointer_y;
    std::uint32_t digest;
};

const Picture PICTURES[] = {
    {"title-after-save", title_after_save, true, -100, -100, 0xFD6A8C71},
    {"title-load-failed", title_load_failed, false, -100, -100, 0x3523EFD3},  // and the save is gone again
    {"create-form", create_form, false, -100, -100, 0x94A2EB04},
    {"create-form-back", create_form_back, false, -100, -100, 0xDA7C9894},
    {"play-by-day", play_by_day, false, 355, 232, 0x2924E80F},
    {"play-facing-left", play_facing_left, false, 355, 232, 0xB665A6D3},
    {"play-by-night", play_by_night, false, 434, 296, 0x90A991BB},
    {"world-corner", world_corner, false, -100, -100, 0x02AF0201},
    {"inventory", inventory, false, 100, 100, 0xD655A0F5},
    {"pause-menu", pause_menu, false, 320, 180, 0xF565CA97},
};

TEST(Pictures, EveryScreenAsAPlayerSeesIt) {
    const auto g = std::make_unique<Game>();
    for (const Picture& pic : PICTURES) {
        game_new(g.get(), SEED, "QA WORLD");
        pic.set_up({*g, g->spawn_x, g->spawn_y + 3, static_cast<float>((g->spawn_y + 3) * 16)});
        Canvas canvas;
        const FrameInput in{0, 0, 0, 0, 0, 0, 0, 0, pic.pointer_x, pic.pointer_y};
        render_game(canvas.renderer, g.get(), &in, pic.save_exists);  // the title is told whether a save exists
        SDL_RenderFlush(canvas.renderer);
        expect_picture(pic.digest, canvas.surface, pic.name);
    }
}

// Only the exact view size is written, so any two screenshots compare pixel for pixel.
TEST(Pictures, ScreenshotsRefuseAnyOtherSize) {
    const std::string file = std::string(std::getenv("XDG_DATA_HOME")) + "/big.bmp";
    EXPECT_EQ(render_screenshot(Canvas(1280, 720).renderer, file.c_str()), 0);
    EXPECT_STREQ(SDL_GetError(), "screenshot output must be exactly 640x360 (got 1280x720)");
    EXPECT_EQ(std::fopen(file.c_str(), "rb"), nullptr);
}

}  // namespace
