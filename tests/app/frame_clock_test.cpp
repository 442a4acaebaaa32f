// Frame timing stays exact after long uptimes.
#include <gtest/gtest.h>

#include <bit>

#include "app/frame_clock.h"

TEST(FrameClock, OneFrameAfterTenDaysOfUptime) {
    constexpr std::uint64_t NS = 1000000000ull;
    const std::uint64_t ten_days = 10ull * 86400ull * NS;
    const float dt = elapsed_seconds(ten_days, ten_days + 16666667ull, NS);
    EXPECT_FLOAT_EQ(dt, 0.016666667f);
    EXPECT_EQ(elapsed_seconds(ten_days, ten_days, NS), 0.0f);
    EXPECT_EQ(elapsed_seconds(0, 3 * NS, NS), 3.0f);
}

TEST(FrameClock, FixedStepIsTheSinglePrecisionSixtieth) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(FIXED_STEP), std::bit_cast<std::uint32_t>(0.016666668f));
}
