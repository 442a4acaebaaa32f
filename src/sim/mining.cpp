// Placeholder until this subsystem lands; replaced by its real implementation.
#include "sim/mining.h"
void game_attack_or_mine(Game*, std::int32_t, std::int32_t, float) {}
