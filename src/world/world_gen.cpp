#include "world/world_gen.h"

#include <cstdio>
#include <cstring>

#include "core/tiles.h"

namespace {

// Per-purpose salts, XORed into the seed so each pass draws its own numbers.
constexpr std::uint32_t SALT_BROAD = 0x246523ADu;
constexpr std::uint32_t SALT_MID = 0xAA50EE18u;
constexpr std::uint32_t SALT_FINE = 0x303CB883u;
constexpr std::uint32_t SALT_CAVE_X = 0x14E5299Eu;
constexpr std::uint32_t SALT_CAVE_Y = 0x9AD0F409u;
constexpr std::uint32_t SALT_CAVE_RX = 0x20BCBE74u;
constexpr std::uint32_t SALT_CAVE_RY = 0xA6A888DFu;
constexpr std::uint32_t SALT_TREE = 0xC686E228u;
constexpr std::uint32_t SALT_TREE_HEIGHT = 0x4C72AC93u;

constexpr int CAVE_COUNT = 150;

// A number drawn as first + hash % count, so first .. first + count - 1.
struct Spread {
    std::uint32_t first, count;
};
// Cave centres lie in columns 8..503 and rows 67..148, below the surface band
// and above the bedrock; radii are 3..12 tiles across and 2..7 down, so caves
// come out as long low chambers rather than tall shafts.
constexpr Spread CAVE_CX{8, 496};
constexpr Spread CAVE_CY{67, 82};
constexpr Spread CAVE_RX{3, 10};
constexpr Spread CAVE_RY{2, 6};
constexpr int BEDROCK_FIRST_ROW = 157;
// Every fifth column from 7 to 502 may grow a tree: 38 in 100 do, on grass.
constexpr std::uint32_t TREE_PERCENT = 38;
constexpr int SPAWN_X = 256;

std::uint32_t salted(std::uint32_t seed, std::uint32_t salt, std::uint32_t b) {
    return world_hash(seed ^ salt, b, 0);
}

int pick(std::uint32_t h, Spread s) { return static_cast<int>(h % s.count + s.first); }

bool sand_column(int x) { return (x / 84) % 5 == 3; }

void terrain_pass(Game* g) {
    for (int x = 0; x < WORLD_W; ++x) {
        const int s = surface_height(g->seed, x);
        const bool sand = sand_column(x);
        tile_at(*g, x, s) = sand ? TILE_SAND : TILE_GRASS;
        const std::uint8_t fill = sand ? TILE_SAND : TILE_DIRT;
        for (int r = s + 1; r < WORLD_H; ++r) {
            std::uint8_t t = TILE_STONE;
            if (r >= BEDROCK_FIRST_ROW) t = TILE_BEDROCK;
            else if (r < s + 5) t = fill;
            tile_at(*g, x, r) = t;
        }
    }
}

// Carves an ellipse; the end rows and columns of the ranges are included.
void carve_ellipse(Game* g, int cx, int cy, int rx, int ry) {
    const int limit = (rx * ry) * (rx * ry);
    for (int y = cy - ry; y <= cy + ry; ++y) {
        for (int x = cx - rx; x <= cx + rx; ++x) {
            const int a = (y - cy) * rx;
            const int b = (x - cx) * ry;
            if (a * a + b * b > limit) continue;
            if (x < 2 || x > 509 || y < 7 || y > 155) continue;
            tile_at(*g, x, y) = TILE_EMPTY;
        }
    }
}

void cave_pass(Game* g) {
    for (int i = 0; i < CAVE_COUNT; ++i) {
        const std::uint32_t ui = static_cast<std::uint32_t>(i);
        const int cx = pick(salted(g->seed, SALT_CAVE_X, ui), CAVE_CX);
        const int cy = pick(salted(g->seed, SALT_CAVE_Y, ui), CAVE_CY);
        const int rx = pick(salted(g->seed, SALT_CAVE_RX, ui), CAVE_RX);
        const int ry = pick(salted(g->seed, SALT_CAVE_RY, ui), CAVE_RY);
        carve_ellipse(g, cx, cy, rx, ry);
        // Every other cave gets a narrower lobe centred on its right end, up to two
        // rows higher or lower, so caves are not all plain ovals.
        if (i % 2 == 0) carve_ellipse(g, cx + rx - 1, cy + (i % 5) - 2, rx / 2 + 2, ry);
    }
}

struct OreRule {
    std::uint8_t tile;
    int min_row;
    std::uint32_t modulus;
    std::uint32_t below;
};

// First matching rule wins; a rule whose depth is not reached is skipped.
constexpr OreRule ORE_RULES[] = {
    {TILE_COAL, 79, 97, 4},
    {TILE_COPPER_ORE, 89, 163, 3},
    {TILE_IRON_ORE, 106, 251, 3},
    {TILE_GLOW_CRYSTAL, 127, 631, 2},
};

void ore_pass(Game* g) {
    for (int y = 61; y <= 156; ++y) {
        for (int x = 2; x <= 509; ++x) {
            std::uint8_t& t = tile_at(*g, x, y);
            if (t != TILE_STONE) continue;
            const std::uint32_t h = world_hash(g->seed, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y));
            for (const OreRule& rule : ORE_RULES) {
                if (y >= rule.min_row && h % rule.modulus < rule.below) {
                    t = rule.tile;
                    break;
                }
            }
        }
    }
}

void tree_pass(Game* g) {
    for (int x = 7; x <= 502; x += 5) {
        const std::uint32_t ux = static_cast<std::uint32_t>(x);
        if (salted(g->seed, SALT_TREE, ux) % 100u >= TREE_PERCENT) continue;
        const int s = surface_height(g->seed, x);
        if (tile_at(*g, x, s) != TILE_GRASS) continue;
        const int height = static_cast<int>((salted(g->seed, SALT_TREE_HEIGHT, ux) & 3u) | 4u);
        const int top = s - height;
        for (int r = top; r <= s - 1; ++r) tile_at(*g, x, r) = TILE_WOOD;
        for (int dy = -2; dy <= 2; ++dy) {
            for (int dx = -3; dx <= 3; ++dx) {
                const int manhattan = (dx < 0 ? -dx : dx) + (dy < 0 ? -dy : dy);
                if (manhattan > 4 || (dx == 0 && dy >= 0)) continue;
                std::uint8_t& t = tile_at(*g, x + dx, top + dy);
                if (t == TILE_EMPTY) t = TILE_LEAVES;
            }
        }
    }
}

void spawn_pass(Game* g) {
    const int s = surface_height(g->seed, SPAWN_X);
    g->spawn_x = SPAWN_X;
    g->spawn_y = s - 3;
    for (int y = g->spawn_y - 2; y <= g->spawn_y + 2; ++y)
        for (int x = g->spawn_x - 2; x <= g->spawn_x + 2; ++x)
            if (in_grid(x, y)) tile_at(*g, x, y) = TILE_EMPTY;
    tile_at(*g, SPAWN_X, s) = TILE_GRASS;
    tile_at(*g, SPAWN_X, s + 1) = TILE_DIRT;
}

}  // namespace

std::int32_t surface_height(std::uint32_t seed, std::int32_t x) {
    const std::uint32_t ux = static_cast<std::uint32_t>(x);
    const std::uint32_t hb = salted(seed, SALT_BROAD, ux / 48u);
    const std::uint32_t hm = salted(seed, SALT_MID, ux / 12u);
    const std::uint32_t hf = salted(seed, SALT_FINE, ux / 4u);
    const int broad = static_cast<int>(hb % 15u);
    const int mid = (static_cast<int>(hm % 11u) - 5) / 2;   // halves toward zero
    const int fine = (static_cast<int>(hf % 5u) - 2) / 2;
    return 47 + broad + mid + fine;
}

void world_generate(Game* game, std::uint32_t seed, const char* name) {
    std::memset(game->tiles, TILE_EMPTY, sizeof game->tiles);
    game->seed = seed == 0 ? 5u : seed;
    const char* stored = (name != nullptr && name[0] != '\0') ? name : DEFAULT_WORLD_NAME;
    // A bounded copy; the bytes after the terminator keep what the record held.
    if (stored != game->name) std::snprintf(game->name, sizeof game->name, "%s", stored);
    else game->name[NAME_SIZE - 1] = '\0';

    terrain_pass(game);
    cave_pass(game);
    ore_pass(game);
    tree_pass(game);
    spawn_pass(game);
}
