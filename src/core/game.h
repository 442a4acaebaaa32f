// The game record: one fixed-size plain value that holds a whole world and the run
// around it (tiles, player, creatures, drops, camera, screen, notice), the screen and
// menu sizes, and posting a notice. All-zero is valid (title, no world); no allocation.
#pragma once

#include <cstdint>
#include <type_traits>

constexpr int WORLD_W = 512;            // tile columns
constexpr int WORLD_H = 160;            // tile rows
constexpr int TILE_SIZE = 16;           // world pixels per tile edge
constexpr int WORLD_PIXEL_W = WORLD_W * TILE_SIZE;  // 8192
constexpr int WORLD_PIXEL_H = WORLD_H * TILE_SIZE;  // 2560
constexpr int VIEW_W = 640;
constexpr int VIEW_H = 360;
constexpr int INVENTORY_SLOTS = 40;
constexpr int HOTBAR_SLOTS = 10;
constexpr int STACK_MAX = 999;
constexpr int MAX_DROPS = 64;
constexpr int MAX_CREATURES = 48;
constexpr int NAME_SIZE = 32;
constexpr int NOTICE_SIZE = 64;
constexpr float NOTICE_SECONDS = 2.2f;

// Screen ids kept in Game::screen.
constexpr std::uint32_t SCREEN_TITLE = 0;
constexpr std::uint32_t SCREEN_CREATE = 1;
constexpr std::uint32_t SCREEN_PLAYING = 2;
constexpr std::uint32_t SCREEN_INVENTORY = 3;
constexpr std::uint32_t SCREEN_PAUSE = 4;

// The title and pause menus have three items each (menu_cursor), the create-world
// form four rows (form_focus): the name, the seed, CREATE WORLD and BACK.
constexpr std::uint32_t MENU_ITEM_COUNT = 3;
constexpr std::uint32_t FORM_ROW_COUNT = 4;
constexpr std::uint32_t FORM_ROW_NAME = 0;
constexpr std::uint32_t FORM_ROW_SEED = 1;
constexpr std::uint32_t FORM_ROW_CREATE = 2;
constexpr std::uint32_t FORM_ROW_BACK = 3;

struct InventorySlot {
    std::uint16_t item;   // ItemId, 0 = empty slot
    std::uint16_t count;  // 1..999 when occupied, 0 when empty
};

struct Player {
    float x, y;            // top-left of the 12 x 26 body, world pixels
    float vx, vy;          // px/s, y positive downward
    std::int32_t hp;
    std::int32_t max_hp;
    std::int32_t facing;   // -1 left, +1 right
    std::uint8_t on_ground;
    float hurt_timer;
    float attack_cooldown;
    float mine_progress;
    std::int32_t mine_x, mine_y;  // tile being mined, -1 for none
    std::uint32_t selected;       // hotbar slot 0..9
    InventorySlot inventory[INVENTORY_SLOTS];
};

struct Drop {
    float x, y;            // top-left of the 8 x 8 box
    float vx, vy;
    std::uint32_t item;
    std::uint32_t count;
    float lifetime;        // seconds left
    std::uint8_t active;
};

struct Creature {
    float x, y;            // top-left of the 14 x 14 box
    float vx, vy;
    std::int32_t hp;
    std::int32_t kind;     // 0 small, 1 large
    std::int32_t dir;      // wander direction, -1 or +1
    float hit_cooldown;
    float flash;
    std::uint8_t alive;
    std::uint8_t on_ground;
};

struct Game {
    std::uint8_t tiles[WORLD_H * WORLD_W];  // row-major: row * 512 + col
    std::uint32_t seed;
    char name[NAME_SIZE];
    float time_of_day;     // [0, 1)
    std::uint32_t day;
    std::uint64_t tick;
    Player player;
    Creature creatures[MAX_CREATURES];
    Drop drops[MAX_DROPS];
    float camera_x, camera_y;
    std::uint32_t screen;
    std::uint32_t menu_cursor;
    std::uint32_t form_focus;
    std::uint32_t craft_cursor;
    std::int32_t spawn_x, spawn_y;
    float creature_spawn_timer;
    float autosave_timer;
    float notice_timer;
    char notice[NOTICE_SIZE];
    std::uint8_t running;
    std::uint8_t world_open;
    std::uint8_t autosave_off;
};

// The record is copied, cleared and saved as one plain value.
static_assert(std::is_trivially_copyable_v<Game>);
static_assert(std::is_trivially_default_constructible_v<Game>);
static_assert(std::is_standard_layout_v<Game>);
static_assert(sizeof(InventorySlot) == 4);

// Tile (col, row) of the grid; callers check the bounds first.
inline std::uint8_t& tile_at(Game& g, int col, int row) { return g.tiles[row * WORLD_W + col]; }
inline std::uint8_t tile_at(const Game& g, int col, int row) { return g.tiles[row * WORLD_W + col]; }
inline bool in_grid(int col, int row) {
    return static_cast<unsigned>(col) < static_cast<unsigned>(WORLD_W) &&
           static_cast<unsigned>(row) < static_cast<unsigned>(WORLD_H);
}

// Shows `text` (cut to 63 characters) as the on-screen notice for 2.2 s.
void game_notice(Game* game, const char* text);
