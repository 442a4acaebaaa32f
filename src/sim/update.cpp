// Placeholder until this subsystem lands; replaced by its real implementation.
#include "sim/update.h"
void game_update(Game*, const FrameInput*, float) {}
