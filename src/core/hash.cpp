#include "core/hash.h"

std::uint32_t world_hash(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    std::uint32_t h = (b * 0x9E3779B9u) ^ a ^ (c * 0x85EBCA6Bu);
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    h ^= h >> 16;
    return h;
}
