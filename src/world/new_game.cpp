#include "world/new_game.h"

#include <cstring>

#include "core/geometry.h"
#include "core/tiles.h"
#include "world/world_gen.h"

namespace {

constexpr std::int32_t STARTING_HP = 10;

// Tools to dig and to fight the first night, dirt to climb and wall up with,
// enough wood for a workbench and a little more, and torches for the first cave.
constexpr InventorySlot STARTING_KIT[] = {
    {ITEM_WORN_PICK, 1},
    {ITEM_SHORT_SWORD, 1},
    {TILE_DIRT, 60},
    {TILE_WOOD, 12},
    {TILE_TORCH, 8},
};

}  // namespace

void game_new(Game* game, std::uint32_t seed, const char* name) {
    // Cleared before the generator reads `name`: a caller passing game->name
    // gets the default name. Kept on purpose (the create-world form relies on it).
    std::memset(game, 0, sizeof *game);
    world_generate(game, seed, name);

    Player& p = game->player;
    player_to_spawn(game);
    p.hp = STARTING_HP;
    p.max_hp = STARTING_HP;
    p.facing = 1;
    p.mine_x = -1;
    p.mine_y = -1;
    for (unsigned i = 0; i < sizeof STARTING_KIT / sizeof STARTING_KIT[0]; ++i) p.inventory[i] = STARTING_KIT[i];

    camera_on_player(game);
    game->time_of_day = 0.2f;
    game->day = 1;
    game->screen = SCREEN_PLAYING;
    game->running = 1;
    game->world_open = 1;
    game_notice(game, "A NEW WORLD AWAKENS");
}
