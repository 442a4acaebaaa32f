// Placeholder until this subsystem lands; replaced by its real implementation.
#include "sim/movement.h"
void move_box(const Game*, float*, float*, float*, float*, std::uint8_t*, float, float, float) {}
