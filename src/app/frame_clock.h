// Frame timing for the main loop: seconds between two performance-counter readings,
// and the fixed step used by unattended runs so they replay identically.
#pragma once

#include <cstdint>

constexpr float FIXED_STEP = 1.0f / 60.0f;

// The difference is taken in 64 bits before converting to float: a float keeps
// 24 bits, so after a few days of uptime two nanosecond readings a frame apart
// round to the same float and the frame time would come out as 0.
inline float elapsed_seconds(std::uint64_t previous, std::uint64_t now, std::uint64_t frequency) {
    return static_cast<float>(now - previous) / static_cast<float>(frequency);
}
