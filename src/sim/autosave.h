// The autosave clock: the frame step counts play time, and every 45 s the main
// loop saves the world and reports how it went. No file is touched here.
#pragma once

#include "core/game.h"

// Counts the frame's time; also while the autosave is switched off.
void autosave_count(Game* game, float dt);
// True when the main loop should save now: on, and 45 s counted since the last try.
bool autosave_due(const Game* game);
// Restarts the count and says whether the save worked. A failed save only says
// so; play goes on and the next try is 45 s later.
void autosave_finish(Game* game, bool saved);
