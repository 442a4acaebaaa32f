#include "save/save_path.h"

#include <SDL.h>

#include <cstdio>

namespace {

constexpr const char* SAVE_FILE_NAME = "talven_world.tvw";

// Built on first use and kept for the whole run. An unusable path leaves the
// buffer empty, so whether it was built is kept apart.
char save_path[1024];
SaveFolder save_folder;
bool built;

}  // namespace

SaveFolder build_save_path(char* out, std::size_t size) {
    char* folder = SDL_GetPrefPath("duskwell", "talven");
    // No preferences folder: the bare name lands in the working directory.
    const SaveFolder where = folder != nullptr ? SaveFolder::PerUser : SaveFolder::Current;
    const int len = std::snprintf(out, size, "%s%s", folder != nullptr ? folder : "", SAVE_FILE_NAME);
    SDL_free(folder);
    // An error (a negative length) turns huge here and counts as too long.
    if (static_cast<std::size_t>(len) < size) return where;
    out[0] = '\0';
    return SaveFolder::TooLong;
}

const char* game_default_save_path() {
    if (!built) save_folder = build_save_path(save_path, sizeof save_path);
    built = true;
    return save_path;
}

SaveFolder game_save_folder() {
    game_default_save_path();
    return save_folder;
}
