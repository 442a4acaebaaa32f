// Placeholder until this subsystem lands; replaced by its real implementation.
#include "save/save_file.h"
bool game_save(const Game*, const char*) { return false; }
bool game_load(Game*, const char*) { return false; }
std::uint32_t save_checksum(const Game*) { return 0; }
bool valid_loaded_game(const Game*) { return false; }
bool game_save_exists(const char*) { return false; }
