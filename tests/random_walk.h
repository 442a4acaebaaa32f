// The rule tests' random walks: one small generator, the one that
// tests/reference/digests.py steps too, so that both walks take the same turns.
#pragma once

#include <cstdint>

struct Walk {
    std::uint32_t seed;
    // 0 .. n-1, from the middle bits of the next step.
    std::uint32_t operator()(std::uint32_t n) { return ((seed = seed * 1664525u + 1013904223u) >> 8) % n; }
};
