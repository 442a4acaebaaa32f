// Placeholder until this subsystem lands; replaced by its real implementation.
#include "core/crafting.h"
const Recipe RECIPES[RECIPE_COUNT] = {};
bool craft_recipe(Game*, std::uint32_t) { return false; }
