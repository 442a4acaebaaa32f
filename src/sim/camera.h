// The moving camera: eases towards the player's centre each frame, a little ahead
// in the facing direction, and never shows anything outside the world.
#pragma once

#include "core/game.h"

void camera_follow(Game* game, float dt);
