#include "save/save_path.h"

#include <SDL.h>

#include <cstdio>

namespace {

constexpr const char* SAVE_FILE_NAME = "talven_world.tvw";

// Built on first use and kept for the whole run; empty until then.
char save_path[1024];

}  // namespace

const char* game_default_save_path() {
    if (save_path[0] != '\0') return save_path;
    char* folder = SDL_GetPrefPath("duskwell", "talven");
    if (folder != nullptr) {
        // A folder too long for the buffer leaves a cut name; saving then goes there.
        std::snprintf(save_path, sizeof save_path, "%s%s", folder, SAVE_FILE_NAME);
        SDL_free(folder);
    } else {
        // No preferences folder: the bare name lands in the working directory.
        std::snprintf(save_path, sizeof save_path, "%s", SAVE_FILE_NAME);
    }
    return save_path;
}
