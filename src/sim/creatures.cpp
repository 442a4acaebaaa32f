// Placeholder until this subsystem lands; replaced by its real implementation.
#include "sim/creatures.h"
bool creatures_try_spawn(Game*) { return false; }
void creatures_step(Game*, float) {}
