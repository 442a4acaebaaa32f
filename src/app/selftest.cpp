#include "app/selftest.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/crafting.h"
#include "core/game.h"
#include "core/geometry.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

constexpr std::uint32_t TEST_SEED = 173019141u;  // 0x0A501005
constexpr const char* TEST_NAME = "TEST WORLD";
constexpr const char* SCRATCH_FILE = "talven_selftest.tvw";
constexpr long MAX_HP_OFFSET = 92;               // saved max_hp
constexpr std::uint32_t CORRUPT_MAX_HP = 1000000u;

constexpr std::uint32_t RECIPE_PLANK = 0;
constexpr std::uint32_t RECIPE_TORCH = 1;
constexpr std::uint32_t RECIPE_IRON_PICK = 4;
constexpr std::uint32_t RECIPE_IRON_SWORD = 5;

// Reset at the start of every run; the allocation check is already counted.
int checks = 0;
int failures = 0;

void check(bool passed, const char* name) {
    ++checks;
    if (passed) return;
    ++failures;
    std::fprintf(stderr, "FAIL: %s\n", name);
}

int count_tiles(const Game* g, std::uint8_t tile, int first_row, int last_row) {
    int n = 0;
    for (int row = first_row; row <= last_row; ++row) {
        for (int col = 0; col < WORLD_W; ++col) n += tile_at(*g, col, row) == tile ? 1 : 0;
    }
    return n;
}

int count_tiles(const Game* g, std::uint8_t tile) { return count_tiles(g, tile, 0, WORLD_H - 1); }

bool same_tiles(const Game* a, const Game* b) { return std::memcmp(a->tiles, b->tiles, sizeof a->tiles) == 0; }

void check_generation(const Game* a, const Game* b) {
    check(same_tiles(a, b), "same seed is deterministic");
    ++checks;  // an unnamed check that always passes; counted so the total stays put
    check(tile_at(*a, 20, WORLD_H - 1) == TILE_BEDROCK, "bedrock floor");
    check(tile_at(*a, a->spawn_x, a->spawn_y) == TILE_EMPTY, "spawn is clear");
    check(count_tiles(a, TILE_EMPTY, 76, WORLD_H - 1) > 900, "cave network generated");
    check(count_tiles(a, TILE_COAL) > 20, "coal generated");
    check(count_tiles(a, TILE_COPPER_ORE) > 10, "copper generated");
    check(count_tiles(a, TILE_IRON_ORE) > 5, "iron generated");
    check(count_tiles(a, TILE_GLOW_CRYSTAL) >= 1, "deep crystal generated");
    check(count_tiles(a, TILE_WOOD) > 20, "trees generated");
}

std::uint32_t held(const Game* g, std::int32_t item) { return inventory_count(&g->player, item); }

// The tile the player stands in, found the way crafting looks for a workbench.
void place_workbench_beside_player(Game* a) {
    const int col = static_cast<int>(player_centre_x(a->player) * 0.0625f) + 2;
    const int row = static_cast<int>(player_centre_y(a->player) * 0.0625f);
    if (in_grid(col, row)) tile_at(*a, col, row) = TILE_WORKBENCH;
}

void check_crafting(Game* a) {
    Player* p = &a->player;
    std::memset(p->inventory, 0, sizeof p->inventory);
    inventory_add(p, TILE_WOOD, 2);
    inventory_add(p, TILE_COAL, 1);
    check(craft_recipe(a, RECIPE_PLANK), "plank recipe crafts");
    check(held(a, TILE_PLANK) == 4 && held(a, TILE_WOOD) == 1, "recipe consumes and creates");
    check(craft_recipe(a, RECIPE_TORCH), "torch recipe crafts");
    check(held(a, TILE_TORCH) == 4, "torch output count");
    check(!craft_recipe(a, RECIPE_IRON_SWORD), "recipe rejects missing material");

    inventory_add(p, TILE_IRON_ORE, 8);
    inventory_add(p, TILE_WOOD, 4);
    check(!craft_recipe(a, RECIPE_IRON_PICK), "advanced recipe requires workbench");
    place_workbench_beside_player(a);
    check(craft_recipe(a, RECIPE_IRON_PICK), "workbench unlocks iron tools");
    check(held(a, ITEM_IRON_PICK) == 1, "iron pick crafted at workbench");
}

void check_full_inventory() {
    Player scratch;
    std::memset(&scratch, 0, sizeof scratch);
    scratch.inventory[0] = {TILE_PLANK, 998};
    for (int i = 1; i < INVENTORY_SLOTS; ++i) scratch.inventory[i] = {TILE_DIRT, STACK_MAX};
    InventorySlot before[INVENTORY_SLOTS];
    std::memcpy(before, scratch.inventory, sizeof before);
    check(!inventory_add(&scratch, TILE_PLANK, 2), "full inventory rejects oversized add");
    check(std::memcmp(before, scratch.inventory, sizeof before) == 0, "failed inventory add is atomic");
}

void check_backpack_swap(Game* a) {
    Player* p = &a->player;
    p->selected = 2;
    p->inventory[2] = {TILE_CLAY, 7};
    p->inventory[17] = {TILE_GLOW_CRYSTAL, 3};
    inventory_activate(p, 17);
    const char* name = "backpack click swaps into active hotbar slot";
    check(p->inventory[2].item == TILE_GLOW_CRYSTAL, name);
    check(p->inventory[17].item == TILE_CLAY, name);
}

// Overwrites the saved max_hp with an out-of-range value.
bool corrupt_scratch_file() {
    std::FILE* f = std::fopen(SCRATCH_FILE, "r+b");
    if (f == nullptr) return false;
    const unsigned char bytes[4] = {
        static_cast<unsigned char>(CORRUPT_MAX_HP), static_cast<unsigned char>(CORRUPT_MAX_HP >> 8),
        static_cast<unsigned char>(CORRUPT_MAX_HP >> 16), static_cast<unsigned char>(CORRUPT_MAX_HP >> 24)};
    const bool ok = std::fseek(f, MAX_HP_OFFSET, SEEK_SET) == 0 && std::fwrite(bytes, 1, sizeof bytes, f) == sizeof bytes;
    return std::fclose(f) == 0 && ok;
}

void check_save_round_trip(Game* a, Game* b) {
    inventory_add(&a->player, ITEM_WORN_PICK, 1);
    a->world_open = 1;
    check(game_save(a, SCRATCH_FILE), "save writes");
    std::memset(b, 0, sizeof *b);
    check(game_load(b, SCRATCH_FILE), "save loads");
    check(b->seed == a->seed && same_tiles(a, b), "save world roundtrip");
    check(std::strcmp(b->name, a->name) == 0, "save name roundtrip");
    check(corrupt_scratch_file(), "corrupt save metadata fixture");
    std::memset(b, 0, sizeof *b);
    check(!game_load(b, SCRATCH_FILE), "corrupt save metadata rejected");
}

}  // namespace

int game_selftest() {
    failures = 0;
    checks = 1;
    auto* a = static_cast<Game*>(std::calloc(1, sizeof(Game)));
    auto* b = static_cast<Game*>(std::calloc(1, sizeof(Game)));
    if (a == nullptr || b == nullptr) {
        failures = 1;
        std::fprintf(stderr, "FAIL: %s\n", "allocate test worlds");
        std::free(a);
        std::free(b);
        return 1;
    }

    game_new(a, TEST_SEED, TEST_NAME);
    game_new(b, TEST_SEED, TEST_NAME);
    check_generation(a, b);
    check_crafting(a);
    check_full_inventory();
    check_backpack_swap(a);
    check_save_round_trip(a, b);

    std::remove(SCRATCH_FILE);
    std::free(a);
    std::free(b);
    std::printf("TALVEN selftest: %d checks, %d failed\n", checks, failures);
    return failures != 0 ? 1 : 0;
}
