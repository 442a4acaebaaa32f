// The save file: its byte layout, the round trip, every kind of file the loader
// must refuse (with the live game untouched), and saves that cannot complete.
#include "save/save_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <bit>
#include <csignal>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include "core/tiles.h"
#include "save/save_support.h"

namespace {

using namespace save_test;

constexpr std::size_t FILE_SIZE = SAVE_FILE_SIZE;
constexpr std::size_t CHECKSUM_AT = 20;
constexpr std::size_t NAME_LAST_BYTE_AT = 55;
constexpr std::size_t TILES_AT = 260;
constexpr std::size_t BEDROCK_TILE_AT = TILES_AT + 159 * WORLD_W + 20;  // bottom row is all bedrock

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float INF = std::numeric_limits<float>::infinity();

std::uint32_t le16(const Bytes& b, std::size_t at) { return b[at] | (b[at + 1] << 8u); }
std::uint32_t le32(const Bytes& b, std::size_t at) { return le16(b, at) | (le16(b, at + 2) << 16u); }
std::uint64_t le64(const Bytes& b, std::size_t at) { return le32(b, at) | (std::uint64_t{le32(b, at + 4)} << 32u); }

// FNV-1a over the file's own bytes: the seed, then everything after the checksum.
std::uint32_t file_checksum(const Bytes& b) {
    std::uint32_t h = 2166136261u;
    auto feed = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i) h = (h ^ b[i]) * 16777619u;
    };
    feed(16, 20);
    feed(24, FILE_SIZE);
    return h;
}

void store_checksum(Bytes& b) {
    const std::uint32_t h = file_checksum(b);
    for (int i = 0; i < 4; ++i) b[CHECKSUM_AT + i] = static_cast<unsigned char>(h >> (8 * i));
}

// First byte at which two records differ, or -1: tells which field went wrong.
long first_difference(const Game& a, const Game& b) {
    const auto* pa = reinterpret_cast<const unsigned char*>(&a);
    const auto* pb = reinterpret_cast<const unsigned char*>(&b);
    for (std::size_t i = 0; i < sizeof(Game); ++i) {
        if (pa[i] != pb[i]) return static_cast<long>(i);
    }
    return -1;
}

// Every saved field at a legal extreme, with multi-byte values whose bytes all
// differ, so a swapped byte order or a shifted field shows.
void set_saved_fields(Game& g) {
    g.seed = 0x11223344u;
    std::snprintf(g.name, sizeof g.name, "%s", "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234");
    g.time_of_day = std::nextafter(1.0f, 0.0f);
    g.day = 100000000u;
    g.tick = 0x0102030405060708ull;
    g.spawn_x = 510;
    g.spawn_y = 158;
    g.player.x = std::nextafter(8192.0f, 0.0f);
    g.player.y = 0.0f;
    g.player.hp = 40;
    g.player.max_hp = 40;
    g.player.selected = 9;
    for (int i = 0; i < INVENTORY_SLOTS; ++i) {
        InventorySlot& s = g.player.inventory[i];
        if (i < 16) s = {static_cast<std::uint16_t>(i + 1), static_cast<std::uint16_t>(999 - i)};
        else if (i < 20) s = {static_cast<std::uint16_t>(100 + i - 16), 1};
        else if (i % 2 == 0) s = {static_cast<std::uint16_t>(1 + i % 16), static_cast<std::uint16_t>(256 + i)};
        else s = {0, 0};
    }
    for (std::size_t i = 0; i < sizeof g.tiles; ++i) g.tiles[i] = static_cast<std::uint8_t>((i * 7 + i / 512) % 17);
}

// Run-time state that a save does not carry and a load must reset.
void scribble_unsaved_fields(Game& g) {
    Player& p = g.player;
    p.vx = 12.5f; p.vy = -3.0f; p.facing = -1; p.on_ground = 1;
    p.hurt_timer = 0.5f; p.attack_cooldown = 0.25f; p.mine_progress = 0.75f; p.mine_x = 3; p.mine_y = 4;
    g.creatures[5] = {1.0f, 2.0f, 3.0f, 4.0f, 5, 1, -1, 0.5f, 0.18f, 1, 1};
    g.drops[63] = {1.0f, 2.0f, 3.0f, 4.0f, 4, 1, 40.0f, 1};
    g.camera_x = 99.0f; g.camera_y = 77.0f;
    g.screen = SCREEN_PAUSE; g.menu_cursor = 2; g.form_focus = 3; g.craft_cursor = 5;
    g.creature_spawn_timer = 1.5f; g.autosave_timer = 44.0f; g.notice_timer = 1.0f;
    std::snprintf(g.notice, sizeof g.notice, "%s", "OLD NEWS");
    g.world_open = 1; g.autosave_off = 1;
}

class SaveFile : public ::testing::Test {
protected:
    void SetUp() override {
        game_new(base.get(), 5010501u, "BASE WORLD");
        game_new(live.get(), 77u, "LIVE WORLD");
        scribble_unsaved_fields(*live);
        std::memcpy(before.get(), live.get(), sizeof(Game));
        ASSERT_TRUE(game_save(base.get(), path.c_str()));
        valid = read_bytes(path);
        ASSERT_EQ(valid.size(), FILE_SIZE);
    }

    // Loads `path` into the live record; a refusal must leave it as it was.
    bool load_live() {
        const bool loaded = game_load(live.get(), path.c_str());
        if (!loaded) {
            EXPECT_EQ(first_difference(*live, *before), -1) << "a refused load changed the live game";
        }
        std::memcpy(live.get(), before.get(), sizeof(Game));
        return loaded;
    }

    bool load_bytes(const Bytes& bytes) {
        EXPECT_TRUE(write_bytes(path, bytes));
        return load_live();
    }

    ScratchDir dir;
    std::string path = dir.file("world.tvw");
    std::unique_ptr<Game> base = std::make_unique<Game>();
    std::unique_ptr<Game> live = std::make_unique<Game>();
    std::unique_ptr<Game> before = std::make_unique<Game>();
    Bytes valid;
};

TEST_F(SaveFile, WritesEveryFieldAtItsOffsetLittleEndian) {
    set_saved_fields(*base);
    ASSERT_TRUE(game_save(base.get(), path.c_str()));
    const Bytes b = read_bytes(path);
    ASSERT_EQ(b.size(), FILE_SIZE);
    const Player& p = base->player;

    EXPECT_EQ(std::memcmp(b.data(), "TVW1", 4), 0);
    EXPECT_EQ(le32(b, 4), 2u);
    EXPECT_EQ(le32(b, 8), 512u);
    EXPECT_EQ(le32(b, 12), 160u);
    EXPECT_EQ(le32(b, 16), base->seed);
    EXPECT_EQ(le32(b, 20), file_checksum(b));
    EXPECT_EQ(le32(b, 20), save_checksum(base.get()));
    EXPECT_EQ(std::memcmp(b.data() + 24, base->name, NAME_SIZE), 0);
    EXPECT_EQ(le32(b, 56), std::bit_cast<std::uint32_t>(base->time_of_day));
    EXPECT_EQ(le32(b, 60), base->day);
    EXPECT_EQ(le64(b, 64), base->tick);
    EXPECT_EQ(le32(b, 72), 510u);
    EXPECT_EQ(le32(b, 76), 158u);
    EXPECT_EQ(le32(b, 80), std::bit_cast<std::uint32_t>(p.x));
    EXPECT_EQ(le32(b, 84), std::bit_cast<std::uint32_t>(p.y));
    EXPECT_EQ(le32(b, 88), 40u);
    EXPECT_EQ(le32(b, 92), 40u);
    EXPECT_EQ(le32(b, 96), 9u);
    for (int i = 0; i < INVENTORY_SLOTS; ++i) {
        EXPECT_EQ(le16(b, 100 + 4 * i), p.inventory[i].item) << "slot " << i;
        EXPECT_EQ(le16(b, 102 + 4 * i), p.inventory[i].count) << "slot " << i;
    }
    EXPECT_EQ(std::memcmp(b.data() + TILES_AT, base->tiles, sizeof base->tiles), 0);
}

TEST_F(SaveFile, RoundTripKeepsSavedFieldsAndResetsTheRest) {
    set_saved_fields(*base);
    scribble_unsaved_fields(*base);
    ASSERT_TRUE(game_save(base.get(), path.c_str()));

    auto loaded = std::make_unique<Game>();
    std::memset(loaded.get(), 0xA5, sizeof(Game));
    ASSERT_TRUE(game_load(loaded.get(), path.c_str()));

    auto expected = std::make_unique<Game>();
    std::memset(expected.get(), 0, sizeof(Game));
    Game& e = *expected;
    std::memcpy(e.tiles, base->tiles, sizeof e.tiles);
    e.seed = base->seed;
    std::memcpy(e.name, base->name, sizeof e.name);
    e.time_of_day = base->time_of_day;
    e.day = base->day;
    e.tick = base->tick;
    e.spawn_x = base->spawn_x;
    e.spawn_y = base->spawn_y;
    e.player.x = base->player.x;
    e.player.y = base->player.y;
    e.player.hp = base->player.hp;
    e.player.max_hp = base->player.max_hp;
    e.player.selected = base->player.selected;
    std::memcpy(e.player.inventory, base->player.inventory, sizeof e.player.inventory);
    e.player.facing = 1;
    e.player.mine_x = -1;
    e.player.mine_y = -1;
    e.screen = SCREEN_PLAYING;
    e.running = 1;
    e.world_open = 1;
    e.camera_x = e.player.x - 320.0f;  // the player starts near the view's centre
    e.camera_y = e.player.y - 180.0f;
    std::snprintf(e.notice, sizeof e.notice, "%s", "WORLD LOADED");
    e.notice_timer = 2.2f;
    EXPECT_EQ(first_difference(*loaded, e), -1);
}

using Edit = void (*)(Game&);
struct RecordCase {
    const char* what;
    Edit edit;
    bool loads;
};

// Each field just inside and just outside its bounds, saved with a matching checksum.
const RecordCase RECORD_CASES[] = {
    {"time_of_day NaN", [](Game& g) { g.time_of_day = NaN; }, false},
    {"time_of_day -NaN", [](Game& g) { g.time_of_day = -NaN; }, false},
    {"time_of_day +inf", [](Game& g) { g.time_of_day = INF; }, false},
    {"time_of_day -inf", [](Game& g) { g.time_of_day = -INF; }, false},
    {"time_of_day below 0", [](Game& g) { g.time_of_day = -std::numeric_limits<float>::denorm_min(); }, false},
    {"time_of_day 1", [](Game& g) { g.time_of_day = 1.0f; }, false},
    {"time_of_day 0", [](Game& g) { g.time_of_day = 0.0f; }, true},
    {"day 0", [](Game& g) { g.day = 0; }, false},
    {"day 100000001", [](Game& g) { g.day = 100000001u; }, false},
    {"day 100000000", [](Game& g) { g.day = 100000000u; }, true},
    {"x NaN", [](Game& g) { g.player.x = NaN; }, false},
    {"x +inf", [](Game& g) { g.player.x = INF; }, false},
    {"x below 0", [](Game& g) { g.player.x = -0.5f; }, false},
    {"x 8192", [](Game& g) { g.player.x = 8192.0f; }, false},
    {"x 0", [](Game& g) { g.player.x = 0.0f; }, true},
    {"y -inf", [](Game& g) { g.player.y = -INF; }, false},
    {"y NaN", [](Game& g) { g.player.y = NaN; }, false},
    {"y 2560", [](Game& g) { g.player.y = 2560.0f; }, false},
    {"y just below 2560", [](Game& g) { g.player.y = std::nextafter(2560.0f, 0.0f); }, true},
    {"spawn_x 0", [](Game& g) { g.spawn_x = 0; }, false},
    {"spawn_x 511", [](Game& g) { g.spawn_x = 511; }, false},
    {"spawn_x -1", [](Game& g) { g.spawn_x = -1; }, false},
    {"spawn_x 1 and spawn_y 1", [](Game& g) { g.spawn_x = 1; g.spawn_y = 1; }, true},
    {"spawn_y 0", [](Game& g) { g.spawn_y = 0; }, false},
    {"spawn_y 159", [](Game& g) { g.spawn_y = 159; }, false},
    {"max_hp 0", [](Game& g) { g.player.max_hp = 0; }, false},
    {"max_hp 41", [](Game& g) { g.player.max_hp = 41; g.player.hp = 41; }, false},
    {"max_hp -5", [](Game& g) { g.player.max_hp = -5; g.player.hp = -10; }, false},
    {"hp 0", [](Game& g) { g.player.hp = 0; }, false},
    {"hp -1", [](Game& g) { g.player.hp = -1; }, false},
    {"hp above max_hp", [](Game& g) { g.player.hp = 11; }, false},
    {"hp 1 of max_hp 1", [](Game& g) { g.player.hp = 1; g.player.max_hp = 1; }, true},
    {"selected 10", [](Game& g) { g.player.selected = 10; }, false},
    {"selected 0xFFFFFFFF", [](Game& g) { g.player.selected = 0xFFFFFFFFu; }, false},
    {"empty slot with a count", [](Game& g) { g.player.inventory[39] = {0, 5}; }, false},
    {"item 17", [](Game& g) { g.player.inventory[9] = {17, 1}; }, false},
    {"item 99", [](Game& g) { g.player.inventory[9] = {99, 1}; }, false},
    {"item 104", [](Game& g) { g.player.inventory[9] = {104, 1}; }, false},
    {"item with count 0", [](Game& g) { g.player.inventory[9] = {1, 0}; }, false},
    {"count 1000", [](Game& g) { g.player.inventory[9] = {2, 1000}; }, false},
    {"items 16 and 103 at their limits", [](Game& g) {
         g.player.inventory[9] = {16, 999};
         g.player.inventory[10] = {103, 1};
     }, true},
    {"tile 17", [](Game& g) { g.tiles[sizeof g.tiles - 1] = 17; }, false},
    {"tile 255", [](Game& g) { g.tiles[0] = 255; }, false},
    {"tile 16", [](Game& g) { g.tiles[sizeof g.tiles - 1] = TILE_CLAY; }, true},
    // Written as it stands; the load ends the name with NUL and the checksum no longer fits.
    {"name without NUL", [](Game& g) { std::memset(g.name, 'N', NAME_SIZE); }, false},
};

TEST_F(SaveFile, LoadChecksEveryFieldsBounds) {
    for (const RecordCase& c : RECORD_CASES) {
        SCOPED_TRACE(c.what);
        auto game = std::make_unique<Game>();
        std::memcpy(game.get(), base.get(), sizeof(Game));
        c.edit(*game);
        ASSERT_TRUE(game_save(game.get(), path.c_str()));
        EXPECT_EQ(load_live(), c.loads);
    }
}

struct ByteCase {
    const char* what;
    std::size_t at;
    unsigned char flip;  // xor mask
    bool fix_checksum;
    bool loads;
};

const ByteCase BYTE_CASES[] = {
    {"magic", 3, 0x01, false, false},
    {"version", 4, 0x03, false, false},
    {"version high byte", 7, 0x01, false, false},
    {"width", 9, 0x01, false, false},
    {"height", 12, 0x01, false, false},
    {"checksum", CHECKSUM_AT + 3, 0x80, false, false},
    {"tile", BEDROCK_TILE_AT, 0x01, false, false},
    {"tile with its checksum", BEDROCK_TILE_AT, 0x01, true, true},
    {"tile 17 with its checksum", BEDROCK_TILE_AT, 0x1B, true, false},
    // The loader ends the name with NUL before hashing, so this byte is free.
    {"name's last byte", NAME_LAST_BYTE_AT, 'Z', false, true},
};

TEST_F(SaveFile, LoadRefusesChangedBytes) {
    for (const ByteCase& c : BYTE_CASES) {
        SCOPED_TRACE(c.what);
        Bytes b = valid;
        b[c.at] ^= c.flip;
        if (c.fix_checksum) store_checksum(b);
        EXPECT_EQ(load_bytes(b), c.loads);
    }
    // A checksum catches any single changed byte, whatever field it lands in.
    for (std::size_t at = 0; at < TILES_AT; ++at) {
        if ((at >= CHECKSUM_AT && at < CHECKSUM_AT + 4) || at == NAME_LAST_BYTE_AT) continue;
        Bytes b = valid;
        b[at] ^= 0x01;
        EXPECT_FALSE(load_bytes(b)) << "byte " << at;
    }
}

TEST_F(SaveFile, LoadRefusesWrongSizesAndMissingFiles) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{3}, std::size_t{16}, std::size_t{100}, TILES_AT,
                                   FILE_SIZE - 1}) {
        EXPECT_FALSE(load_bytes(Bytes(valid.begin(), valid.begin() + static_cast<long>(size)))) << size << " bytes";
    }
    for (const std::size_t extra : {1, 5000}) {
        Bytes b = valid;
        b.resize(FILE_SIZE + extra, 0xEE);
        EXPECT_TRUE(load_bytes(b)) << extra << " extra bytes";
    }

    path = dir.file("missing.tvw");
    EXPECT_FALSE(game_save_exists(path.c_str()));
    EXPECT_FALSE(load_live());
    ASSERT_TRUE(fs::create_directory(path));
    EXPECT_FALSE(load_live()) << "a folder in place of the file";
}

TEST_F(SaveFile, SaveExistsWhenTheFileOpens) {
    EXPECT_TRUE(game_save_exists(path.c_str()));
    const std::string empty = dir.file("empty.tvw");
    ASSERT_TRUE(write_bytes(empty, {}));
    EXPECT_TRUE(game_save_exists(empty.c_str()));
    EXPECT_FALSE(game_save_exists(dir.file("nothing.tvw").c_str()));
}

TEST_F(SaveFile, NothingIsWrittenWithoutAnOpenWorld) {
    const std::string fresh = dir.file("fresh.tvw");
    base->world_open = 0;
    EXPECT_FALSE(game_save(base.get(), fresh.c_str()));
    base->world_open = 1;
    EXPECT_FALSE(game_save(nullptr, fresh.c_str()));
    EXPECT_FALSE(game_save(base.get(), nullptr));
    EXPECT_FALSE(fs::exists(fresh));
    EXPECT_FALSE(fs::exists(fresh + ".tmp"));
}

TEST_F(SaveFile, LeftoverTempFileIsReplaced) {
    ASSERT_TRUE(write_bytes(path + ".tmp", Bytes(FILE_SIZE + 999, 0x42)));
    base->day = 7;
    ASSERT_TRUE(game_save(base.get(), path.c_str()));
    EXPECT_FALSE(fs::exists(path + ".tmp"));
    EXPECT_EQ(fs::file_size(path), FILE_SIZE);
    ASSERT_TRUE(game_load(live.get(), path.c_str()));
    EXPECT_EQ(live->day, 7u);
}

// After a failed save the old file is byte for byte what it was and no .tmp is left.
class FailedSave : public SaveFile {
protected:
    void expect_old_save_intact(const std::string& at) {
        EXPECT_EQ(read_bytes(at), valid) << "the previous save changed";
        EXPECT_FALSE(fs::exists(at + ".tmp")) << "the temporary file was left behind";
    }
    void change_world() { base->tiles[1000] = base->tiles[1000] == TILE_STONE ? TILE_DIRT : TILE_STONE; }
};

TEST_F(FailedSave, UnwritableFolder) {
    const fs::path folder = dir.path() / "locked";
    fs::create_directory(folder);
    const std::string at = (folder / "world.tvw").string();
    ASSERT_TRUE(write_bytes(at, valid));
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
    change_world();
    const int status = run_in_child([&] {
        if (!drop_root()) return CANNOT_DROP_ROOT;
        return game_save(base.get(), at.c_str()) ? 1 : 0;
    });
    if (status == CANNOT_DROP_ROOT) GTEST_SKIP() << "cannot drop root, and root writes anywhere";
    EXPECT_EQ(status, 0) << "the save claimed success";
    expect_old_save_intact(at);
}

TEST_F(FailedSave, RenameOntoAFolder) {
    const std::string at = dir.file("folder.tvw");
    ASSERT_TRUE(fs::create_directory(at));
    ASSERT_TRUE(write_bytes(at + "/inside", valid));
    EXPECT_FALSE(game_save(base.get(), at.c_str()));
    EXPECT_TRUE(fs::is_directory(at));
    expect_old_save_intact(at + "/inside");
    EXPECT_FALSE(fs::exists(at + ".tmp"));
}

TEST_F(FailedSave, WriteCutShortByAFileSizeLimit) {
    change_world();
    // Nothing written, a cut inside the grid, and the very last byte missing.
    for (const rlim_t limit : {rlim_t{0}, rlim_t{4096}, rlim_t{FILE_SIZE - 1}}) {
        SCOPED_TRACE(limit);
        const int status = run_in_child([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit cap{limit, limit};
            if (setrlimit(RLIMIT_FSIZE, &cap) != 0) return 2;
            return game_save(base.get(), path.c_str()) ? 1 : 0;
        });
        EXPECT_EQ(status, 0) << "the save claimed success";
        expect_old_save_intact(path);
    }
}

// A path of exactly `length` characters, its folders created, ending in a file name.
std::string path_of_length(const fs::path& root, std::size_t length) {
    fs::create_directories(root);
    std::string p = root.string();
    while (length - p.size() - 1 > 250) {
        p += "/" + std::string(149, 'd');
        fs::create_directory(p);
    }
    return p + "/" + std::string(length - p.size() - 1, 'w');
}

// "<path>.tmp" must fit its buffer whole: a cut name could be the save itself.
TEST_F(FailedSave, PathTooLongForItsTemporaryName) {
    const std::string longest = path_of_length(dir.path() / "a", 1023);
    ASSERT_EQ(longest.size(), 1023u);
    ASSERT_TRUE(write_bytes(longest, valid));
    change_world();
    EXPECT_TRUE(game_save(base.get(), longest.c_str()));
    EXPECT_NE(read_bytes(longest), valid);

    const std::string too_long = path_of_length(dir.path() / "b", 1024);
    ASSERT_EQ(too_long.size(), 1024u);
    ASSERT_TRUE(write_bytes(too_long, valid));
    EXPECT_FALSE(game_save(base.get(), too_long.c_str()));
    expect_old_save_intact(too_long);
    const fs::path folder = fs::path(too_long).parent_path();
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1) << "a file was created";
}

}  // namespace
