// The built-in self-test (--selftest): generation, inventory, crafting and the save
// format end to end, one "FAIL: ..." line per failed check and a summary.
#pragma once

int game_selftest();
