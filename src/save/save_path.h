// Where the world is saved: "talven_world.tvw" in the per-user preferences folder,
// built once per run into a 1024-byte buffer (the bare name when SDL has no folder).
#pragma once

#include <cstddef>

// Where the path points: the per-user folder, the working directory (no per-user
// folder could be had), or nowhere (the whole path does not fit: it stays empty,
// so nothing is ever saved under a cut name).
enum class SaveFolder { PerUser, Current, TooLong };

// The path the game saves to: built on the first call, the same buffer after.
const char* game_default_save_path();

// Which folder that path is in (builds the path on first use).
SaveFolder game_save_folder();

// Builds that path afresh into `out`, asking SDL for the folder.
SaveFolder build_save_path(char* out, std::size_t size);
