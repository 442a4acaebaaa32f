// Placeholder until this subsystem lands; replaced by its real implementation.
#include "sim/placing.h"
void game_place(Game*, std::int32_t, std::int32_t) {}
