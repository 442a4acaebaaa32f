// Placeholder until this subsystem lands; replaced by its real implementation.
#include "sim/drops.h"
void spawn_drop(Game*, std::uint32_t, float, float) {}
void drops_step(Game*, float) {}
