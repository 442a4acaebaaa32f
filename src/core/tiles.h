// Tile and item vocabulary: one numbering for tiles (1..16 are also block items)
// and the tools (100..103), with solidity, hardness, drops and display names.
// Pure, table-driven, total functions: any input value gives a defined result.
#pragma once

#include <cstdint>

constexpr std::uint8_t TILE_EMPTY = 0;
constexpr std::uint8_t TILE_GRASS = 1;
constexpr std::uint8_t TILE_DIRT = 2;
constexpr std::uint8_t TILE_STONE = 3;
constexpr std::uint8_t TILE_WOOD = 4;
constexpr std::uint8_t TILE_LEAVES = 5;
constexpr std::uint8_t TILE_COAL = 6;
constexpr std::uint8_t TILE_COPPER_ORE = 7;
constexpr std::uint8_t TILE_IRON_ORE = 8;
constexpr std::uint8_t TILE_GLOW_CRYSTAL = 9;
constexpr std::uint8_t TILE_BEDROCK = 10;
constexpr std::uint8_t TILE_PLANK = 11;
constexpr std::uint8_t TILE_STONE_BRICK = 12;
constexpr std::uint8_t TILE_WORKBENCH = 13;
constexpr std::uint8_t TILE_TORCH = 14;
constexpr std::uint8_t TILE_SAND = 15;
constexpr std::uint8_t TILE_CLAY = 16;
constexpr int TILE_MAX = 16;  // highest tile id a world may hold

constexpr std::uint16_t ITEM_WORN_PICK = 100;
constexpr std::uint16_t ITEM_SHORT_SWORD = 101;
constexpr std::uint16_t ITEM_IRON_PICK = 102;
constexpr std::uint16_t ITEM_IRON_SWORD = 103;

bool tile_solid(std::uint32_t tile);
float tile_hardness(std::uint32_t tile);
std::uint32_t tile_drop(std::uint32_t tile);
std::int32_t tile_to_item(std::int32_t tile);
std::int32_t item_to_tile(std::int32_t item);
const char* item_name(std::uint32_t item);
// True for the ids an inventory slot may hold: 1..16 and 100..103.
bool item_known(std::uint32_t item);
