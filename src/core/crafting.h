// The six crafting recipes and the craft action; the last two need a WORKBENCH
// within 4 tiles. Every outcome but a bad index leaves a notice for the HUD.
#pragma once

#include <cstdint>

#include "core/game.h"

struct Recipe {
    std::uint32_t out_item, out_count;
    std::uint32_t in1_item, in1_count;
    std::uint32_t in2_item, in2_count;  // in2_item 0 = no second input
};

constexpr int RECIPE_COUNT = 6;
extern const Recipe RECIPES[RECIPE_COUNT];

bool craft_recipe(Game* game, std::uint32_t index);
