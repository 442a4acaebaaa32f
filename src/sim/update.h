// The frame step: advances a world by one frame of play in a fixed order (player
// motion, actions, day clock, creatures, drops, camera, notice, autosave clock).
// A deterministic function of (Game, FrameInput, dt); it never allocates or prints.
#pragma once

#include "core/frame_input.h"
#include "core/game.h"

// Acts only on the playing screen with a world open; dt is clamped to 0.05 s.
// The autosave itself is the caller's: see autosave_due.
void game_update(Game* game, const FrameInput* input, float dt);
