// Where the world is saved: "talven_world.tvw" in the per-user preferences folder,
// built once per run into a 1024-byte buffer (the bare name when SDL has no folder).
#pragma once

#include <cstddef>

// The path the game saves to: built on the first call, the same buffer after.
const char* game_default_save_path();

// Builds that path afresh into `out` (cut to fit `size`), asking SDL for the folder.
void build_save_path(char* out, std::size_t size);
