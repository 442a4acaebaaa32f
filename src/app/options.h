// Run options from the environment and the command line (options win), parsed
// without SDL so tests can call it directly.
#pragma once

#include <cstdint>

struct RunOptions {
    std::int32_t max_frames;     // 0 = no limit
    const char* screenshot;      // null = no screenshot
    bool debug_game;
    bool fixed_step;             // 1/60 s steps instead of measured time
    const char* record;          // demo file to record into; null = none
    const char* replay;          // demo file to play back; null = none
    bool verify;                 // with replay: headless, check every digest
};

enum class OptionsAction { Run, Help, Version, Selftest };

// Looks up an environment variable; null when unset.
using EnvLookup = const char* (*)(const char* name);

// Reads TALVEN_MAX_FRAMES, TALVEN_SCREENSHOT, TALVEN_DEBUG_GAME, TALVEN_RECORD through `env`,
// then the arguments after argv[0]. Stops at "--help", "--version" or "--selftest".
OptionsAction parse_options(int argc, const char* const* argv, EnvLookup env, RunOptions* out);

extern const char USAGE_TEXT[];
// "talven" and the release number the build was configured with.
extern const char VERSION_TEXT[];
