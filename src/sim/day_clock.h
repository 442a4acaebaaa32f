// The day clock: a day of 240 s of play in time_of_day [0, 1), the day count and
// the frame tick, and which part of the day is night (when creatures come more often).
#pragma once

#include "core/game.h"

// Advances the time of day (wrapping into the next day) and the tick by one frame.
void day_clock_step(Game* game, float dt);

bool is_night(float time_of_day);
