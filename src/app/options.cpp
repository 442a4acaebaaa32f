#include "app/options.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

const char USAGE_TEXT[] = "TALVEN\n  --selftest\n  --max-frames N\n  --screenshot FILE.bmp\n  --debug-game\n  --version\n  --record FILE\n  --replay FILE\n  --verify";
const char VERSION_TEXT[] = "talven " TALVEN_VERSION;

namespace {

bool set_and_not_empty(const char* value) { return value != nullptr && value[0] != '\0'; }

// atoi for every value that fits in 32 bits; beyond that, where atoi itself is
// undefined, the nearest 32-bit limit.
std::int32_t read_int(const char* text) {
    const long long v = std::strtoll(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long long>(v, INT32_MIN, INT32_MAX));
}

}  // namespace

OptionsAction parse_options(int argc, const char* const* argv, EnvLookup env, RunOptions* out) {
    *out = RunOptions{};

    // Variables first, so that options given on the command line win.
    if (const char* v = env("TALVEN_MAX_FRAMES"); set_and_not_empty(v)) out->max_frames = read_int(v);
    // An empty screenshot path still means screenshot mode (its write then fails).
    if (const char* v = env("TALVEN_SCREENSHOT"); v != nullptr) out->screenshot = v;
    if (const char* v = env("TALVEN_DEBUG_GAME"); set_and_not_empty(v)) out->debug_game = read_int(v) != 0;
    if (const char* v = env("TALVEN_RECORD"); set_and_not_empty(v)) out->record = v;

    for (int i = 1; i < argc; ++i) {
        const char* arg = argv[i];
        const bool has_value = i + 1 < argc;
        if (std::strcmp(arg, "--selftest") == 0) return OptionsAction::Selftest;
        if (std::strcmp(arg, "--help") == 0) return OptionsAction::Help;
        if (std::strcmp(arg, "--version") == 0) return OptionsAction::Version;
        if (std::strcmp(arg, "--max-frames") == 0 && has_value) {
            out->max_frames = read_int(argv[++i]);
        } else if (std::strcmp(arg, "--screenshot") == 0 && has_value) {
            out->screenshot = argv[++i];
        } else if (std::strcmp(arg, "--debug-game") == 0) {
            out->debug_game = true;
        } else if (std::strcmp(arg, "--record") == 0 && has_value) {
            out->record = argv[++i];
        } else if (std::strcmp(arg, "--replay") == 0 && has_value) {
            out->replay = argv[++i];
        } else if (std::strcmp(arg, "--verify") == 0) {
            out->verify = true;
        }
    }

    if (out->screenshot != nullptr && out->max_frames < 1) out->max_frames = 3;
    out->fixed_step = out->max_frames > 0 || out->screenshot != nullptr;
    return OptionsAction::Run;
}
