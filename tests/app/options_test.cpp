// Run options: variables first, options win, consumed values, the stop words,
// and the screenshot and frame-limit rules.
#include <gtest/gtest.h>

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

struct Case {
    std::vector<const char*> args;
    std::map<std::string, std::string> env;
    OptionsAction action;
    int max_frames;
    const char* screenshot;  // null: none
    bool debug_game;
    bool fixed_step;
};

const OptionsAction RUN = OptionsAction::Run;

const Case CASES[] = {
    {{}, {}, RUN, 0, nullptr, false, false},
    // Options override their variables.
    {{"--max-frames", "2", "--screenshot", "b.bmp"}, {{"TALVEN_MAX_FRAMES", "5"}, {"TALVEN_SCREENSHOT", "a.bmp"}}, RUN, 2, "b.bmp", false, true},
    {{"--debug-game"}, {{"TALVEN_DEBUG_GAME", "0"}}, RUN, 0, nullptr, true, false},
    // Variables read with atoi; only the screenshot variable counts when empty.
    {{}, {{"TALVEN_MAX_FRAMES", "12abc"}, {"TALVEN_DEBUG_GAME", "yes"}}, RUN, 12, nullptr, false, true},
    {{}, {{"TALVEN_MAX_FRAMES", ""}, {"TALVEN_DEBUG_GAME", "2"}}, RUN, 0, nullptr, true, false},
    {{}, {{"TALVEN_SCREENSHOT", ""}}, RUN, 3, "", false, true},
    // A screenshot needs a frame to be taken on: limits below 1 become 3.
    {{"--screenshot", "s.bmp", "--max-frames", "-7"}, {}, RUN, 3, "s.bmp", false, true},
    {{"--screenshot", "s.bmp", "--max-frames", "10"}, {}, RUN, 10, "s.bmp", false, true},
    // A negative limit means no limit and measured time.
    {{"--max-frames", "-1"}, {}, RUN, -1, nullptr, false, false},
    // Values are consumed whatever they look like; a trailing option is ignored.
    {{"--max-frames", "--help"}, {}, RUN, 0, nullptr, false, false},
    {{"--screenshot", "--selftest"}, {}, RUN, 3, "--selftest", false, true},
    {{"--max-frames"}, {{"TALVEN_MAX_FRAMES", "4"}}, RUN, 4, nullptr, false, true},
    {{"--screenshot"}, {}, RUN, 0, nullptr, false, false},
    // The first of the stop words wins; near misses are ignored.
    {{"--help", "--selftest"}, {}, OptionsAction::Help, 0, nullptr, false, false},
    {{"--debug-game", "--version", "--help"}, {}, OptionsAction::Version, 0, nullptr, false, false},
    {{"--help", "--version"}, {}, OptionsAction::Help, 0, nullptr, false, false},
    {{"--selftest", "--version"}, {}, OptionsAction::Selftest, 0, nullptr, false, false},
    {{"--screenshot", "--version", "-v", "--Version"}, {}, RUN, 3, "--version", false, true},
    {{"--bogus", "-h", "--HELP", "--selftest", "--help"}, {}, OptionsAction::Selftest, 0, nullptr, false, false},
};

}  // namespace

TEST(Options, ParsesEnvironmentThenArguments) {
    for (std::size_t i = 0; i < std::size(CASES); ++i) {
        const Case& c = CASES[i];
        g_env = c.env;
        std::vector<const char*> argv = c.args;
        argv.insert(argv.begin(), "talven");
        RunOptions got{};
        const OptionsAction action = parse_options(static_cast<int>(argv.size()), argv.data(), fake_env, &got);
        const std::string where = "case " + std::to_string(i);
        EXPECT_EQ(action, c.action) << where;
        if (action != RUN) continue;
        EXPECT_EQ(got.max_frames, c.max_frames) << where;
        EXPECT_EQ(got.screenshot == nullptr, c.screenshot == nullptr) << where;
        if (got.screenshot && c.screenshot) {
            EXPECT_STREQ(got.screenshot, c.screenshot) << where;
        }
        EXPECT_EQ(got.debug_game, c.debug_game) << where;
        EXPECT_EQ(got.fixed_step, c.fixed_step) << where;
    }
}

TEST(Options, UsageText) {
    EXPECT_STREQ(USAGE_TEXT, "TALVEN\n  --selftest\n  --max-frames N\n  --screenshot FILE.bmp\n  --debug-game\n  --version\n  --record FILE\n  --replay FILE\n  --verify");
}

TEST(Options, DemoOptionsAndTheRecordVariable) {
    struct DemoCase {
        std::vector<const char*> args;
        const char* record_env;  // null: unset
        const char* record;
        const char* replay;
        bool verify;
    };
    const DemoCase cases[] = {
        {{}, nullptr, nullptr, nullptr, false},
        {{}, "", nullptr, nullptr, false},  // an empty variable records nothing
        {{}, "env.tvd", "env.tvd", nullptr, false},
        {{"--record", "arg.tvd"}, "env.tvd", "arg.tvd", nullptr, false},
        {{"--replay", "--verify", "--record"}, nullptr, nullptr, "--verify", false},
        {{"--verify", "--replay", "r.tvd"}, nullptr, nullptr, "r.tvd", true},
    };
    for (const DemoCase& c : cases) {
        g_env.clear();
        if (c.record_env != nullptr) g_env["TALVEN_RECORD"] = c.record_env;
        std::vector<const char*> argv = c.args;
        argv.insert(argv.begin(), "talven");
        RunOptions got{};
        EXPECT_EQ(RUN, parse_options(static_cast<int>(argv.size()), argv.data(), fake_env, &got));
        EXPECT_EQ(std::string(c.record ? c.record : "-"), std::string(got.record ? got.record : "-"));
        EXPECT_EQ(std::string(c.replay ? c.replay : "-"), std::string(got.replay ? got.replay : "-"));
        EXPECT_EQ(c.verify, got.verify);
        EXPECT_EQ(0, got.max_frames);  // demo options leave the design's options alone
    }
}
