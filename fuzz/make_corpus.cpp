// Writes the fuzzer's seed corpus into the folder given on the command line:
// valid saves of a few worlds, and near-valid ones that differ from a valid save
// in one field at or just past its bounds, in the header, in the size or the name.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "core/game.h"
#include "save/save_file.h"
#include "world/new_game.h"

namespace {

using Edit = void (*)(Game&);

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float INF = std::numeric_limits<float>::infinity();

// Field changes written through the saver, so the checksum matches them.
const struct { const char* name; Edit edit; } RECORD_VARIANTS[] = {
    {"valid", [](Game&) {}},
    {"day-max", [](Game& g) { g.day = 100000000u; }},
    {"day-over", [](Game& g) { g.day = 100000001u; }},
    {"day-zero", [](Game& g) { g.day = 0; }},
    {"time-nan", [](Game& g) { g.time_of_day = NaN; }},
    {"time-inf", [](Game& g) { g.time_of_day = INF; }},
    {"time-one", [](Game& g) { g.time_of_day = 1.0f; }},
    {"time-below-one", [](Game& g) { g.time_of_day = std::nextafter(1.0f, 0.0f); }},
    {"x-edge", [](Game& g) { g.player.x = std::nextafter(8192.0f, 0.0f); }},
    {"x-out", [](Game& g) { g.player.x = 8192.0f; }},
    {"y-neg-inf", [](Game& g) { g.player.y = -INF; }},
    {"y-negative", [](Game& g) { g.player.y = -0.5f; }},
    {"spawn-edges", [](Game& g) { g.spawn_x = 510; g.spawn_y = 158; }},
    {"spawn-out", [](Game& g) { g.spawn_x = 511; }},
    {"hp-full", [](Game& g) { g.player.max_hp = 40; g.player.hp = 40; }},
    {"hp-over", [](Game& g) { g.player.hp = 11; }},
    {"max-hp-over", [](Game& g) { g.player.max_hp = 41; }},
    {"selected-9", [](Game& g) { g.player.selected = 9; }},
    {"selected-10", [](Game& g) { g.player.selected = 10; }},
    {"full-stacks", [](Game& g) {
         for (int i = 0; i < INVENTORY_SLOTS; ++i) g.player.inventory[i] = {static_cast<std::uint16_t>(1 + i % 16), 999};
         g.player.inventory[39] = {103, 1};
     }},
    {"count-1000", [](Game& g) { g.player.inventory[5] = {2, 1000}; }},
    {"empty-with-count", [](Game& g) { g.player.inventory[7] = {0, 5}; }},
    {"item-104", [](Game& g) { g.player.inventory[7] = {104, 1}; }},
    {"tile-17", [](Game& g) { g.tiles[sizeof g.tiles - 1] = 17; }},
    {"tile-16", [](Game& g) { g.tiles[sizeof g.tiles - 1] = 16; }},
    {"name-31", [](Game& g) { std::memset(g.name, 'N', NAME_SIZE - 1); }},
    {"name-no-nul", [](Game& g) { std::memset(g.name, 'N', NAME_SIZE); }},
    {"tick-large", [](Game& g) { g.tick = 0x0123456789ABCDEFull; }},
};

// Byte changes to a valid save; those from offset 16 on break its checksum.
const struct { const char* name; long offset; unsigned char value; } BYTE_VARIANTS[] = {
    {"bad-magic", 3, '2'}, {"bad-version", 4, 3}, {"bad-width", 8, 0},
    {"bad-height", 13, 1}, {"bad-checksum", 20, 0}, {"name-last-byte", 55, 'Z'},
    {"bad-tile", 300, 1},
};

std::string folder;

bool write_bytes(const char* name, const std::vector<unsigned char>& bytes) {
    const std::string path = folder + "/" + name;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (f == nullptr) return false;
    const bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    return std::fclose(f) == 0 && ok;
}

bool read_bytes(const std::string& path, std::vector<unsigned char>* bytes) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (f == nullptr) return false;
    bytes->assign(SAVE_FILE_SIZE, 0);
    const bool ok = std::fread(bytes->data(), 1, bytes->size(), f) == bytes->size();
    std::fclose(f);
    return ok;
}

bool save_variant(Game* game, const char* name) {
    game->world_open = 1;
    return game_save(game, (folder + "/" + name).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    folder = argv[1];
    auto base = std::make_unique<Game>();
    auto game = std::make_unique<Game>();
    bool ok = true;

    const std::uint32_t seeds[] = {1u, 5010501u, 173019141u};
    for (const std::uint32_t seed : seeds) {
        game_new(game.get(), seed, nullptr);
        ok &= save_variant(game.get(), ("world-" + std::to_string(seed)).c_str());
    }

    game_new(base.get(), 5010501u, "SEED WORLD");
    for (const auto& v : RECORD_VARIANTS) {
        std::memcpy(game.get(), base.get(), sizeof(Game));
        v.edit(*game);
        ok &= save_variant(game.get(), v.name);
    }

    std::vector<unsigned char> valid;
    ok &= read_bytes(folder + "/valid", &valid);
    for (const auto& v : BYTE_VARIANTS) {
        std::vector<unsigned char> bytes = valid;
        bytes[static_cast<std::size_t>(v.offset)] = v.value;
        ok &= write_bytes(v.name, bytes);
    }
    std::vector<unsigned char> bytes = valid;
    bytes.pop_back();
    ok &= write_bytes("one-byte-short", bytes);
    bytes = valid;
    bytes.resize(260);
    ok &= write_bytes("no-tiles", bytes);
    bytes = valid;
    bytes.push_back(0x5A);
    ok &= write_bytes("one-byte-extra", bytes);
    ok &= write_bytes("empty", {});

    if (!ok) {
        std::fprintf(stderr, "%s: could not write the corpus into %s\n", argv[0], argv[1]);
        return 1;
    }
    return 0;
}
