// The save file: 82,180 little-endian bytes with an FNV-1a checksum. Saves go to
// "<path>.tmp", reach the disk, then are renamed over the old file; loads check
// everything in a scratch record before touching the live one.
#pragma once

#include <cstdint>

#include "core/game.h"

constexpr int SAVE_FILE_SIZE = 82180;

bool game_save(const Game* game, const char* path);
bool game_load(Game* game, const char* path);
std::uint32_t save_checksum(const Game* game);
bool valid_loaded_game(const Game* game);
bool game_save_exists(const char* path);
