// Placeholder until this subsystem lands; replaced by its real implementation.
#include "save/save_path.h"
const char* game_default_save_path() { return "talven_world.tvw"; }
