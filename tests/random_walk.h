// The rule tests' random walks: one small generator, simple enough to step the
// same way in the separate script that worked out each walk's digest.
#pragma once

#include <cstdint>

struct Walk {
    std::uint32_t seed;
    // 0 .. n-1, from the middle bits of the next step.
    std::uint32_t operator()(std::uint32_t n) { return ((seed = seed * 1664525u + 1013904223u) >> 8) % n; }
};
