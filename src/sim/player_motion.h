// The player's own motion for one frame: running and turning, ground friction,
// jumps (cut short when the key is let go), gravity and the move through the grid.
#pragma once

#include "core/frame_input.h"
#include "core/game.h"

void player_move(Game* game, const FrameInput& input, float dt);
