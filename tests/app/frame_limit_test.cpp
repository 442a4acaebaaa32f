// Frame limits read as atoi reads them wherever the value fits in 32 bits, and
// saturated at the nearest 32-bit limit beyond, from both sources.
#include <gtest/gtest.h>

#include <climits>
#include <string_view>

#include "app/options.h"

namespace {

const char* g_value;

const char* env_with_value(const char* name) {
    return std::string_view(name) == "TALVEN_MAX_FRAMES" || std::string_view(name) == "TALVEN_DEBUG_GAME" ? g_value : nullptr;
}

TEST(FrameLimit, OutOfRangeValuesSaturate) {
    const struct { const char* text; int limit; } cases[] = {
        {"2147483647", INT_MAX},           {"2147483648", INT_MAX},
        {"99999999999999999999", INT_MAX}, {" +4294967296x", INT_MAX},
        {"-2147483648", INT_MIN},          {"-2147483649", INT_MIN},
        {"-99999999999999999999", INT_MIN}, {"\t-12abc", -12},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const char* argv[] = {"talven", "--max-frames", c.text};
        RunOptions from_env{}, from_option{};
        g_value = c.text;
        parse_options(1, argv, env_with_value, &from_env);  // the variables alone
        g_value = nullptr;
        parse_options(3, argv, env_with_value, &from_option);
        EXPECT_EQ(c.limit, from_env.max_frames);
        EXPECT_EQ(c.limit, from_option.max_frames);
        EXPECT_TRUE(from_env.debug_game);  // never cut to 0 on the way
    }
}

}  // namespace
