#include "core/tiles.h"

namespace {

// Passable tiles are EMPTY, LEAVES and TORCH; every id from 15 up is solid.
constexpr std::uint32_t SOLID_MASK = 0x3FDEu;

// Seconds of bare-hand mining work per tile id 1..16.
constexpr float HARDNESS[16] = {
    0.32f, 0.32f, 1.05f, 0.55f, 0.18f, 0.85f, 0.85f, 1.35f,
    1.6f, 9999.0f, 0.55f, 1.05f, 0.55f, 0.1f, 0.32f, 0.32f,
};
constexpr float HARDNESS_OUTSIDE_TABLE = 0.1f;

constexpr const char* TILE_NAMES[17] = {
    "EMPTY", "GRASS", "DIRT", "STONE", "WOOD", "LEAVES", "COAL", "COPPER ORE", "IRON ORE",
    "GLOW CRYSTAL", "BEDROCK", "PLANK", "STONE BRICK", "WORKBENCH", "TORCH", "SAND", "CLAY",
};
constexpr const char* TOOL_NAMES[4] = {"WORN PICK", "SHORT SWORD", "IRON PICK", "IRON SWORD"};

}  // namespace

bool tile_solid(std::uint32_t tile) {
    if (tile > 14) return true;
    return ((SOLID_MASK >> tile) & 1u) != 0;
}

float tile_hardness(std::uint32_t tile) {
    const std::uint32_t index = tile - 1u;  // id 0 wraps to a huge index
    return index < 16u ? HARDNESS[index] : HARDNESS_OUTSIDE_TABLE;
}

std::uint32_t tile_drop(std::uint32_t tile) {
    return tile == TILE_GRASS ? TILE_DIRT : tile;
}

std::int32_t tile_to_item(std::int32_t tile) {
    return (tile >= 1 && tile <= TILE_MAX) ? tile : 0;
}

std::int32_t item_to_tile(std::int32_t item) {
    if (item < 1 || item > TILE_MAX || item == TILE_BEDROCK) return 0;
    return item;
}

const char* item_name(std::uint32_t item) {
    if (item <= TILE_MAX) return TILE_NAMES[item];
    if (item >= ITEM_WORN_PICK && item <= ITEM_IRON_SWORD) return TOOL_NAMES[item - ITEM_WORN_PICK];
    return "UNKNOWN";
}

bool item_known(std::uint32_t item) {
    return (item >= 1 && item <= TILE_MAX) || (item >= ITEM_WORN_PICK && item <= ITEM_IRON_SWORD);
}
