#include "core/game.h"

#include <cstdio>
#include <cstring>

#include "world/world_gen.h"

namespace {

constexpr InventorySlot STARTING_KIT[] = {
    {100, 1},  // WORN PICK
    {101, 1},  // SHORT SWORD
    {2, 60},   // DIRT
    {4, 12},   // WOOD
    {14, 8},   // TORCH
};

}  // namespace

void game_new(Game* game, std::uint32_t seed, const char* name) {
    // Cleared before the generator reads `name`: a caller passing game->name
    // gets the default name. Kept on purpose (the create-world form relies on it).
    std::memset(game, 0, sizeof *game);
    world_generate(game, seed, name);

    Player& p = game->player;
    p.x = static_cast<float>(game->spawn_x * 16) + 2.0f;
    p.y = static_cast<float>(game->spawn_y * 16);
    p.hp = 10;
    p.max_hp = 10;
    p.facing = 1;
    p.mine_x = -1;
    p.mine_y = -1;
    for (unsigned i = 0; i < sizeof STARTING_KIT / sizeof STARTING_KIT[0]; ++i) p.inventory[i] = STARTING_KIT[i];

    game->camera_x = p.x - 320.0f;
    game->camera_y = p.y - 180.0f;
    game->time_of_day = 0.2f;
    game->day = 1;
    game->screen = SCREEN_PLAYING;
    game->running = 1;
    game->world_open = 1;
    game_notice(game, "A NEW WORLD AWAKENS");
}

void game_notice(Game* game, const char* text) {
    std::snprintf(game->notice, sizeof game->notice, "%s", text);
    game->notice_timer = NOTICE_SECONDS;
}
