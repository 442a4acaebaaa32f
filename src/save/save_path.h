// Where the world is saved: "talven_world.tvw" in the per-user preferences folder,
// built once per run into a 1024-byte buffer (the bare name when SDL has no folder).
#pragma once

const char* game_default_save_path();
