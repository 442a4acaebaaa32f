// Run options: variables first, options win, consumed values, the stop words,
// and the screenshot and frame-limit rules.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "app/options.h"

namespace {

std::map<std::string, std::string> g_env;

const char* fake_env(const char* name) {
    auto it = g_env.find(name);
    return it == g_env.end() ? nullptr : it->second.c_str();
}

struct Parsed {
    OptionsAction action;
    RunOptions opts;
};

Parsed parse(std::vector<const char*> args, std::map<std::string, std::string> env = {}) {
    g_env = std::move(env);
    args.insert(args.begin(), "talven");
    Parsed p{};
    p.action = parse_options(static_cast<int>(args.size()), args.data(), fake_env, &p.opts);
    return p;
}

}  // namespace

TEST(Options, NothingGivenMeansInteractivePlay) {
    const Parsed p = parse({});
    EXPECT_EQ(p.action, OptionsAction::Run);
    EXPECT_EQ(p.opts.max_frames, 0);
    EXPECT_EQ(p.opts.screenshot, nullptr);
    EXPECT_FALSE(p.opts.debug_game);
    EXPECT_FALSE(p.opts.fixed_step);
}

TEST(Options, OptionsOverrideVariables) {
    const Parsed p = parse({"--max-frames", "2", "--screenshot", "b.bmp"},
                           {{"TALVEN_MAX_FRAMES", "5"}, {"TALVEN_SCREENSHOT", "a.bmp"}, {"TALVEN_DEBUG_GAME", "0"}});
    EXPECT_EQ(p.opts.max_frames, 2);
    EXPECT_STREQ(p.opts.screenshot, "b.bmp");
    EXPECT_FALSE(p.opts.debug_game);

    EXPECT_EQ(parse({}, {{"TALVEN_MAX_FRAMES", "5"}}).opts.max_frames, 5);
    EXPECT_TRUE(parse({"--debug-game"}, {{"TALVEN_DEBUG_GAME", "0"}}).opts.debug_game);
}

TEST(Options, VariablesFollowAtoi) {
    EXPECT_EQ(parse({}, {{"TALVEN_MAX_FRAMES", "abc"}}).opts.max_frames, 0);
    EXPECT_EQ(parse({}, {{"TALVEN_MAX_FRAMES", "12abc"}}).opts.max_frames, 12);
    EXPECT_EQ(parse({}, {{"TALVEN_MAX_FRAMES", "-4"}}).opts.max_frames, -4);
    EXPECT_FALSE(parse({}, {{"TALVEN_DEBUG_GAME", "yes"}}).opts.debug_game);
    EXPECT_FALSE(parse({}, {{"TALVEN_DEBUG_GAME", ""}}).opts.debug_game);
    EXPECT_TRUE(parse({}, {{"TALVEN_DEBUG_GAME", "2"}}).opts.debug_game);
}

TEST(Options, EmptyScreenshotVariableStillMeansScreenshotMode) {
    const Parsed p = parse({}, {{"TALVEN_SCREENSHOT", ""}});
    ASSERT_NE(p.opts.screenshot, nullptr);
    EXPECT_STREQ(p.opts.screenshot, "");
    EXPECT_EQ(p.opts.max_frames, 3);
    EXPECT_TRUE(p.opts.fixed_step);
    // An empty frame-limit variable, by contrast, is ignored.
    EXPECT_EQ(parse({}, {{"TALVEN_MAX_FRAMES", ""}}).opts.max_frames, 0);
}

TEST(Options, ScreenshotAndFrameLimitRules) {
    EXPECT_EQ(parse({"--screenshot", "s.bmp"}).opts.max_frames, 3);
    EXPECT_EQ(parse({"--screenshot", "s.bmp", "--max-frames", "0"}).opts.max_frames, 3);
    EXPECT_EQ(parse({"--screenshot", "s.bmp", "--max-frames", "-7"}).opts.max_frames, 3);
    EXPECT_EQ(parse({"--screenshot", "s.bmp", "--max-frames", "10"}).opts.max_frames, 10);

    const Parsed negative = parse({"--max-frames", "-1"});
    EXPECT_EQ(negative.opts.max_frames, -1);
    EXPECT_FALSE(negative.opts.fixed_step);  // measured time, no limit
    EXPECT_TRUE(parse({"--max-frames", "1"}).opts.fixed_step);
}

TEST(Options, ValuesAreConsumedWhateverTheyLookLike) {
    const Parsed help_as_value = parse({"--max-frames", "--help"});
    EXPECT_EQ(help_as_value.action, OptionsAction::Run);
    EXPECT_EQ(help_as_value.opts.max_frames, 0);

    const Parsed selftest_as_path = parse({"--screenshot", "--selftest"});
    EXPECT_EQ(selftest_as_path.action, OptionsAction::Run);
    EXPECT_STREQ(selftest_as_path.opts.screenshot, "--selftest");
}

TEST(Options, TrailingOptionWithoutValueIsIgnored) {
    EXPECT_EQ(parse({"--max-frames"}, {{"TALVEN_MAX_FRAMES", "4"}}).opts.max_frames, 4);
    EXPECT_EQ(parse({"--screenshot"}).opts.screenshot, nullptr);
}

TEST(Options, FirstOfHelpAndSelftestWins) {
    EXPECT_EQ(parse({"--help", "--selftest"}).action, OptionsAction::Help);
    EXPECT_EQ(parse({"--selftest", "--help"}).action, OptionsAction::Selftest);
    EXPECT_EQ(parse({"--bogus", "-h", "--HELP", "--selftest"}).action, OptionsAction::Selftest);
}

TEST(Options, UsageText) {
    EXPECT_STREQ(USAGE_TEXT, "TALVEN\n  --selftest\n  --max-frames N\n  --screenshot FILE.bmp\n  --debug-game");
}
