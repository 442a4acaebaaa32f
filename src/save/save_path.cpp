#include "save/save_path.h"

#include <SDL.h>

#include <cstdio>

namespace {

constexpr const char* SAVE_FILE_NAME = "talven_world.tvw";

// Built on first use and kept for the whole run; empty until then.
char save_path[1024];

}  // namespace

void build_save_path(char* out, std::size_t size) {
    char* folder = SDL_GetPrefPath("duskwell", "talven");
    if (folder != nullptr) {
        // A folder too long for the buffer leaves a cut name; saving then goes there.
        std::snprintf(out, size, "%s%s", folder, SAVE_FILE_NAME);
        SDL_free(folder);
    } else {
        // No preferences folder: the bare name lands in the working directory.
        std::snprintf(out, size, "%s", SAVE_FILE_NAME);
    }
}

const char* game_default_save_path() {
    if (save_path[0] == '\0') build_save_path(save_path, sizeof save_path);
    return save_path;
}
