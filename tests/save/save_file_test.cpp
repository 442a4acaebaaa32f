// The save file: its bytes pinned by a digest, the round trip, the files the loader
// must refuse (with the live game untouched), no save without an open world, and a
// path too long for its temporary name. Where it goes, the fallback to the bare
// name and saves cut short are tried on the running program.
#include "save/save_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "core/game_digest.h"
#include "save/save_support.h"
#include "world/new_game.h"

namespace {

using namespace save_test;

constexpr std::size_t NAME_LAST_BYTE_AT = 55;
constexpr std::size_t TILES_AT = 260;
constexpr std::size_t BEDROCK_TILE_AT = TILES_AT + 159 * WORLD_W + 20;  // the bottom row is all bedrock

// Every saved field at its highest legal value, multi-byte values with differing
// bytes so a swapped or shifted field shows.
void set_saved_fields(Game& g) {
    g.seed = 0x11223344u;
    std::snprintf(g.name, sizeof g.name, "%s", "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234");
    g.time_of_day = std::nextafter(1.0f, 0.0f);
    g.day = 100000000u;
    g.tick = 0x0102030405060708ull;
    g.spawn_x = 510; g.spawn_y = 158;
    g.player.x = std::nextafter(8192.0f, 0.0f); g.player.y = std::nextafter(2560.0f, 0.0f);
    g.player.hp = g.player.max_hp = 40;
    g.player.selected = 9;
    for (int i = 0; i < INVENTORY_SLOTS; ++i) {  // items 1..16 and 100..103, some slots empty
        const auto item = static_cast<std::uint16_t>(i % 20 < 16 ? i % 20 + 1 : 84 + i % 20);
        g.player.inventory[i] = i % 7 == 6 ? InventorySlot{0, 0} : InventorySlot{item, static_cast<std::uint16_t>(999 - i)};
    }
    for (std::size_t i = 0; i < sizeof g.tiles; ++i) g.tiles[i] = static_cast<std::uint8_t>((i * 7 + i / 512) % 17);
}

class SaveFile : public ::testing::Test {
protected:
    void SetUp() override {
        game_new(base.get(), 5010501u, "BASE WORLD");
        std::memset(live.get(), 0x5A, sizeof(Game));
        std::memcpy(before.get(), live.get(), sizeof(Game));
        ASSERT_TRUE(game_save(base.get(), path.c_str()));
        valid = read_bytes(path);
        ASSERT_EQ(valid.size(), SAVE_FILE_SIZE);
        base->day = 7;  // so that a later save differs from the valid file
    }

    // Loads `bytes` into the live record; a refusal must leave it as it was.
    bool load_bytes(const Bytes& bytes) {
        EXPECT_TRUE(write_bytes(path, bytes));
        const bool loaded = game_load(live.get(), path.c_str());
        EXPECT_EQ(game_digest(before.get()), loaded ? game_digest(before.get()) : game_digest(live.get()))
            << "a refused load changed the live game";
        std::memcpy(live.get(), before.get(), sizeof(Game));
        return loaded;
    }

    ScratchDir dir;
    std::string path = dir.file("world.tvw");
    std::unique_ptr<Game> base = std::make_unique<Game>(), live = std::make_unique<Game>();
    std::unique_ptr<Game> before = std::make_unique<Game>();
    Bytes valid;
};

TEST_F(SaveFile, RoundTripThroughTheFileLayoutKeepsSavedFieldsAndResetsTheRest) {
    std::memset(base.get(), 0x5A, sizeof(Game));  // junk in every field a load must reset
    set_saved_fields(*base);
    ASSERT_TRUE(write_bytes(path + ".tmp", Bytes(SAVE_FILE_SIZE + 999, 0x42)));  // a crash's leftover is replaced
    ASSERT_TRUE(game_save(base.get(), path.c_str()));
    EXPECT_FALSE(fs::exists(path + ".tmp"));

    // Checked once against the file built field by field, little-endian, in file order.
    const Bytes file = read_bytes(path);
    EXPECT_EQ(0x4E8E2CC8u, fnv1a(file.data(), file.size())) << "the file's bytes";

    // A load keeps the saved fields and sets the rest: facing right, nothing mined,
    // playing, the player at the view's centre, "WORLD LOADED" (checked once field by field).
    ASSERT_TRUE(game_load(live.get(), path.c_str()));
    EXPECT_EQ(0xAC75757Eu, game_digest(live.get()));
}

struct LoadCase {
    const char* what;
    void (*edit_game)(Game&);   // before saving, so the checksum still matches
    void (*edit_file)(Bytes&);  // on the saved bytes
    bool loads;
};

// The base world has 10 hp of 10. The highest legal values load in the round trip.
const LoadCase LOAD_CASES[] = {
    {"lowest legal values", [](Game& g) { g.time_of_day = g.player.x = g.player.y = 0.0f;
                                           g.spawn_x = g.spawn_y = g.player.hp = g.player.max_hp = 1; }, nullptr, true},
    {"time_of_day NaN", [](Game& g) { g.time_of_day = std::nanf(""); }, nullptr, false},
    {"time_of_day below 0", [](Game& g) { g.time_of_day = std::nextafter(0.0f, -1.0f); }, nullptr, false},
    {"time_of_day 1", [](Game& g) { g.time_of_day = 1.0f; }, nullptr, false},
    {"day 0", [](Game& g) { g.day = 0; }, nullptr, false},
    {"day 100000001", [](Game& g) { g.day = 100000001u; }, nullptr, false},
    {"x below 0", [](Game& g) { g.player.x = -0.5f; }, nullptr, false},
    {"x 8192", [](Game& g) { g.player.x = 8192.0f; }, nullptr, false},
    {"y NaN", [](Game& g) { g.player.y = std::nanf(""); }, nullptr, false},
    {"y 2560", [](Game& g) { g.player.y = 2560.0f; }, nullptr, false},
    {"spawn_x 0", [](Game& g) { g.spawn_x = 0; }, nullptr, false},
    {"spawn_x 511", [](Game& g) { g.spawn_x = 511; }, nullptr, false},
    {"spawn_y 0", [](Game& g) { g.spawn_y = 0; }, nullptr, false},
    {"spawn_y 159", [](Game& g) { g.spawn_y = 159; }, nullptr, false},
    {"max_hp 0", [](Game& g) { g.player.max_hp = 0; }, nullptr, false},
    {"max_hp 41", [](Game& g) { g.player.max_hp = g.player.hp = 41; }, nullptr, false},
    {"hp 0", [](Game& g) { g.player.hp = 0; }, nullptr, false},
    {"hp above max_hp", [](Game& g) { g.player.hp = 11; }, nullptr, false},
    {"selected 10", [](Game& g) { g.player.selected = 10; }, nullptr, false},
    {"empty slot with a count", [](Game& g) { g.player.inventory[39] = {0, 5}; }, nullptr, false},
    {"item 17", [](Game& g) { g.player.inventory[9] = {17, 1}; }, nullptr, false},
    {"item 104", [](Game& g) { g.player.inventory[9] = {104, 1}; }, nullptr, false},
    {"item with count 0", [](Game& g) { g.player.inventory[9] = {1, 0}; }, nullptr, false},
    {"count 1000", [](Game& g) { g.player.inventory[9] = {2, 1000}; }, nullptr, false},
    {"tile 17", [](Game& g) { g.tiles[sizeof g.tiles - 1] = 17; }, nullptr, false},
    // Saved as it stands; the load ends the name with NUL and the checksum no longer fits.
    {"name without NUL", [](Game& g) { std::memset(g.name, 'N', NAME_SIZE); }, nullptr, false},
    {"tile under the checksum", nullptr, [](Bytes& b) { b[BEDROCK_TILE_AT] ^= 0x01; }, false},
    // The loader ends the name with NUL before hashing, so this byte is free.
    {"name's last byte", nullptr, [](Bytes& b) { b[NAME_LAST_BYTE_AT] = 'Z'; }, true},
    {"one byte short", nullptr, [](Bytes& b) { b.pop_back(); }, false},
    {"extra bytes", nullptr, [](Bytes& b) { b.resize(SAVE_FILE_SIZE + 5000, 0xEE); }, true},
};

TEST_F(SaveFile, LoadRefusesBadFilesAndLeavesTheGameAlone) {
    for (const LoadCase& c : LOAD_CASES) {
        SCOPED_TRACE(c.what);
        auto game = std::make_unique<Game>();
        std::memcpy(game.get(), base.get(), sizeof(Game));
        if (c.edit_game != nullptr) c.edit_game(*game);
        ASSERT_TRUE(game_save(game.get(), path.c_str()));
        Bytes b = read_bytes(path);
        if (c.edit_file != nullptr) c.edit_file(b);
        EXPECT_EQ(c.loads, load_bytes(b));
    }
    // Any other changed byte before the tiles, header and checksum included, fails.
    for (std::size_t at = 0; at < TILES_AT; ++at) {
        Bytes b = valid;
        b[at] ^= 0x01;
        EXPECT_EQ(at == NAME_LAST_BYTE_AT, load_bytes(b)) << "byte " << at;
    }
    EXPECT_FALSE(game_load(live.get(), dir.file("missing.tvw").c_str()));
}

// Nothing is written without an open world. (Saves that fail part way are tried
// on the running program, under a file-size limit, and against hostile folders.)
TEST_F(SaveFile, NoOpenWorldNoSave) {
    base->world_open = 0;
    EXPECT_FALSE(game_save(base.get(), path.c_str()));
    EXPECT_EQ(valid, read_bytes(path));
    EXPECT_FALSE(fs::exists(path + ".tmp"));
}

// A path of exactly `length` characters under `root`, its folders created.
std::string path_of_length(const fs::path& root, std::size_t length) {
    fs::create_directories(root);
    std::string p = root.string();
    while (length - p.size() - 1 > 250) fs::create_directory(p += "/" + std::string(149, 'd'));
    return p + "/" + std::string(length - p.size() - 1, 'w');
}

// "<path>.tmp" must fit its buffer whole: a cut name could be the save itself.
TEST_F(SaveFile, PathTooLongForItsTemporaryNameOpensNothing) {
    for (const std::size_t length : {1023u, 1024u}) {
        const std::string at = path_of_length(dir.path / std::to_string(length), length);
        ASSERT_TRUE(write_bytes(at, valid));
        EXPECT_EQ(length == 1023u, game_save(base.get(), at.c_str()));
        EXPECT_EQ(length == 1024u, read_bytes(at) == valid) << length;
        EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(at).parent_path()), fs::directory_iterator()), 1);
    }
}

}  // namespace
