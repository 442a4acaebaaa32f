// Run options: variables first, options win, consumed values, the stop words,
// the screenshot and frame-limit rules, and limits too large for 32 bits.
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

std::string summary(OptionsAction action, const RunOptions& o) {
    if (action == OptionsAction::Help) return "help";
    if (action == OptionsAction::Version) return "version";
    if (action == OptionsAction::Selftest) return "selftest";
    return "frames " + std::to_string(o.max_frames) + (o.screenshot ? " shot '" + std::string(o.screenshot) + "'" : "") +
           (o.debug_game ? " debug" : "") + (o.fixed_step ? " fixed" : "") +
           (o.record ? " record '" + std::string(o.record) + "'" : "") +
           (o.replay ? " replay '" + std::string(o.replay) + "'" : "") + (o.verify ? " verify" : "");
}

struct Case {
    std::vector<const char*> args;
    std::map<std::string, std::string> env;
    const char* want;
};

const Case CASES[] = {
    {{}, {}, "frames 0"},
    // Options override their variables.
    {{"--max-frames", "2", "--screenshot", "b.bmp"}, {{"TALVEN_MAX_FRAMES", "5"}, {"TALVEN_SCREENSHOT", "a.bmp"}},
     "frames 2 shot 'b.bmp' fixed"},
    {{"--debug-game"}, {{"TALVEN_DEBUG_GAME", "0"}}, "frames 0 debug"},
    // Variables read with atoi; only the screenshot variable counts when empty.
    {{}, {{"TALVEN_MAX_FRAMES", "12abc"}, {"TALVEN_DEBUG_GAME", "yes"}}, "frames 12 fixed"},
    {{}, {{"TALVEN_MAX_FRAMES", ""}, {"TALVEN_DEBUG_GAME", "2"}}, "frames 0 debug"},
    {{}, {{"TALVEN_SCREENSHOT", ""}}, "frames 3 shot '' fixed"},
    // Limits read as atoi reads them where they fit in 32 bits and saturated beyond, never cut to 0 on the way.
    {{"--max-frames", "2147483648"}, {}, "frames 2147483647 fixed"},
    {{"--max-frames", "-2147483648"}, {}, "frames -2147483648"},
    {{"--max-frames", "\t-12abc"}, {{"TALVEN_MAX_FRAMES", "99999999999999999999"}}, "frames -12"},
    {{}, {{"TALVEN_MAX_FRAMES", " +4294967296x"}, {"TALVEN_DEBUG_GAME", "4294967296"}}, "frames 2147483647 debug fixed"},
    {{}, {{"TALVEN_MAX_FRAMES", "-99999999999999999999"}, {"TALVEN_DEBUG_GAME", "-2147483649"}}, "frames -2147483648 debug"},
    // A screenshot needs a frame to be taken on: limits below 1 become 3.
    {{"--screenshot", "s.bmp", "--max-frames", "-7"}, {}, "frames 3 shot 's.bmp' fixed"},
    {{"--screenshot", "s.bmp", "--max-frames", "1"}, {}, "frames 1 shot 's.bmp' fixed"},  // 1 is enough
    // A negative limit means no limit and measured time.
    {{"--max-frames", "-1"}, {}, "frames -1"},
    // Values are consumed whatever they look like; a trailing option is ignored.
    {{"--max-frames", "--help"}, {}, "frames 0"},
    {{"--screenshot", "--selftest"}, {}, "frames 3 shot '--selftest' fixed"},
    {{"--max-frames"}, {{"TALVEN_MAX_FRAMES", "4"}}, "frames 4 fixed"},
    {{"--screenshot"}, {}, "frames 0"},
    // The first of the stop words wins (the program test runs two more orders); near misses are ignored.
    {{"--help", "--version"}, {}, "help"},
    {{"--selftest", "--version"}, {}, "selftest"},
    {{"--screenshot", "--version", "-v", "--Version"}, {}, "frames 3 shot '--version' fixed"},
    {{"--bogus", "-h", "--HELP", "--selftest", "--help"}, {}, "selftest"},
    // Demos: the option wins over its variable, which counts only when not empty.
    {{}, {{"TALVEN_RECORD", ""}}, "frames 0"},
    {{}, {{"TALVEN_RECORD", "env.tvd"}}, "frames 0 record 'env.tvd'"},
    {{"--record", "arg.tvd"}, {{"TALVEN_RECORD", "env.tvd"}}, "frames 0 record 'arg.tvd'"},
    {{"--replay", "--verify", "--record"}, {}, "frames 0 replay '--verify'"},
    {{"--verify", "--replay", "r.tvd"}, {}, "frames 0 replay 'r.tvd' verify"},
};

TEST(Options, ParsesEnvironmentThenArguments) {
    for (const Case& c : CASES) {
        g_env = c.env;
        std::vector<const char*> argv = c.args;
        argv.insert(argv.begin(), "talven");
        RunOptions got{};
        const OptionsAction action = parse_options(static_cast<int>(argv.size()), argv.data(), fake_env, &got);
        EXPECT_EQ(summary(action, got), c.want) << "case " << &c - CASES;
    }
}

}  // namespace
