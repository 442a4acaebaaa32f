#include "save/save_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "core/game_digest.h"
#include "core/geometry.h"
#include "core/tiles.h"

namespace {

constexpr char MAGIC[4] = {'T', 'V', 'W', '1'};
constexpr std::uint32_t VERSION = 2;
constexpr std::uint32_t MAX_DAY = 100000000u;
constexpr int MAX_HP_LIMIT = 40;
constexpr std::size_t TILE_BYTES = sizeof(Game::tiles);
constexpr std::size_t SLOT_BYTES = 4;

// A save path plus ".tmp" must fit whole: a cut name could equal the save path
// itself and a failed save would then destroy the world it meant to protect.
constexpr std::size_t TMP_NAME_SIZE = 1028;

// Another running copy may be writing its save: wait this long, a few
// milliseconds at a time, before giving up with the world kept.
constexpr int LOCK_TRIES = 100;
constexpr long LOCK_WAIT_NS = 5'000'000;

static_assert(TILE_BYTES == 81920);

void put_u16(unsigned char* out, std::uint16_t v) {
    out[0] = static_cast<unsigned char>(v);
    out[1] = static_cast<unsigned char>(v >> 8);
}

void put_u32(unsigned char* out, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) out[i] = static_cast<unsigned char>(v >> (8 * i));
}

void put_u64(unsigned char* out, std::uint64_t v) {
    for (int i = 0; i < 8; ++i) out[i] = static_cast<unsigned char>(v >> (8 * i));
}

std::uint16_t get_u16(const unsigned char* in) {
    return static_cast<std::uint16_t>(in[0] | (in[1] << 8));
}

std::uint32_t get_u32(const unsigned char* in) {
    std::uint32_t v = 0;
    for (int i = 0; i < 4; ++i) v |= static_cast<std::uint32_t>(in[i]) << (8 * i);
    return v;
}

std::uint64_t get_u64(const unsigned char* in) {
    std::uint64_t v = 0;
    for (int i = 0; i < 8; ++i) v |= static_cast<std::uint64_t>(in[i]) << (8 * i);
    return v;
}

// Every saved field after the header (file bytes 24 to the end), in file order.
// One list serves the checksum, the writer and the reader, so the three can never
// disagree on order. The visitor returns false to stop at the first failure.
template <class G, class Visit>
bool each_body_field(G& g, Visit&& visit) {
    return visit(g.name) && visit(g.time_of_day) && visit(g.day) && visit(g.tick) &&
           visit(g.spawn_x) && visit(g.spawn_y) && visit(g.player.x) && visit(g.player.y) &&
           visit(g.player.hp) && visit(g.player.max_hp) && visit(g.player.selected) &&
           visit(g.player.inventory) && visit(g.tiles);
}

// Little-endian image of one field. The name and the tiles are bytes already
// and are handled by the visitors directly.
struct Encoded {
    unsigned char bytes[INVENTORY_SLOTS * SLOT_BYTES];
    std::size_t size;
};

Encoded encode(std::uint32_t v) { Encoded e{}; put_u32(e.bytes, v); e.size = 4; return e; }
Encoded encode(std::int32_t v) { return encode(static_cast<std::uint32_t>(v)); }
Encoded encode(float v) { return encode(std::bit_cast<std::uint32_t>(v)); }
Encoded encode(std::uint64_t v) { Encoded e{}; put_u64(e.bytes, v); e.size = 8; return e; }
Encoded encode(const InventorySlot (&slots)[INVENTORY_SLOTS]) {
    Encoded e{};
    for (int i = 0; i < INVENTORY_SLOTS; ++i) {
        put_u16(e.bytes + i * SLOT_BYTES, slots[i].item);
        put_u16(e.bytes + i * SLOT_BYTES + 2, slots[i].count);
    }
    e.size = sizeof e.bytes;
    return e;
}

void decode(const unsigned char* in, std::uint32_t& v) { v = get_u32(in); }
void decode(const unsigned char* in, std::int32_t& v) { v = static_cast<std::int32_t>(get_u32(in)); }
void decode(const unsigned char* in, float& v) { v = std::bit_cast<float>(get_u32(in)); }
void decode(const unsigned char* in, std::uint64_t& v) { v = get_u64(in); }
void decode(const unsigned char* in, InventorySlot (&slots)[INVENTORY_SLOTS]) {
    for (int i = 0; i < INVENTORY_SLOTS; ++i) {
        slots[i].item = get_u16(in + i * SLOT_BYTES);
        slots[i].count = get_u16(in + i * SLOT_BYTES + 2);
    }
}

struct Hasher {
    std::uint32_t h;
    template <std::size_t N>
    bool operator()(const char (&bytes)[N]) { h = fnv1a(bytes, N, h); return true; }
    template <std::size_t N>
    bool operator()(const std::uint8_t (&bytes)[N]) { h = fnv1a(bytes, N, h); return true; }
    template <class T>
    bool operator()(const T& field) {
        const Encoded e = encode(field);
        h = fnv1a(e.bytes, e.size, h);
        return true;
    }
};

// One fwrite per field, each checked.
struct Writer {
    std::FILE* f;
    bool put(const void* data, std::size_t size) { return std::fwrite(data, 1, size, f) == size; }
    template <std::size_t N>
    bool operator()(const char (&bytes)[N]) { return put(bytes, N); }
    template <std::size_t N>
    bool operator()(const std::uint8_t (&bytes)[N]) { return put(bytes, N); }
    template <class T>
    bool operator()(const T& field) {
        const Encoded e = encode(field);
        return put(e.bytes, e.size);
    }
};

struct Reader {
    std::FILE* f;
    bool get(void* data, std::size_t size) { return std::fread(data, 1, size, f) == size; }
    template <std::size_t N>
    bool operator()(char (&bytes)[N]) { return get(bytes, N); }
    template <std::size_t N>
    bool operator()(std::uint8_t (&bytes)[N]) { return get(bytes, N); }
    template <class T>
    bool operator()(T& field) {
        unsigned char raw[sizeof field];
        if (!get(raw, sizeof raw)) return false;
        decode(raw, field);
        return true;
    }
};

bool write_u32(std::FILE* f, std::uint32_t v) { return Writer{f}(v); }
bool read_u32(std::FILE* f, std::uint32_t* v) { return Reader{f}(*v); }

// The save's bytes are on the disk, not only in the kernel's cache, before the
// rename makes them the save.
bool flush_to_disk(std::FILE* f) {
    return std::fflush(f) == 0 && ::fsync(::fileno(f)) == 0;
}

// Makes the rename itself durable. Best effort: the rename has already happened,
// so whichever of the two whole files a crash leaves behind is a valid save.
void sync_folder_of(const char* path) {
    char folder[TMP_NAME_SIZE];
    const char* slash = std::strrchr(path, '/');
    if (slash == nullptr) {
        std::snprintf(folder, sizeof folder, ".");
    } else {
        const int len = slash == path ? 1 : static_cast<int>(slash - path);
        std::snprintf(folder, sizeof folder, "%.*s", len, path);
    }
    const int fd = ::open(folder, O_RDONLY | O_DIRECTORY);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

bool write_save(std::FILE* f, const Game* game) {
    Writer w{f};
    return w.put(MAGIC, sizeof MAGIC) && write_u32(f, VERSION) &&
           write_u32(f, static_cast<std::uint32_t>(WORLD_W)) &&
           write_u32(f, static_cast<std::uint32_t>(WORLD_H)) && write_u32(f, game->seed) &&
           write_u32(f, save_checksum(game)) && each_body_field(*game, w);
}

// Reads everything the file holds into `scratch` (which starts zeroed) and
// returns the stored checksum through `stored`; false on a bad header or a
// file that ends early.
bool read_save(std::FILE* f, Game* scratch, std::uint32_t* stored) {
    char magic[sizeof MAGIC];
    if (std::fread(magic, 1, sizeof magic, f) != sizeof magic) return false;
    if (std::memcmp(magic, MAGIC, sizeof MAGIC) != 0) return false;
    std::uint32_t version = 0, width = 0, height = 0;
    if (!read_u32(f, &version) || !read_u32(f, &width) || !read_u32(f, &height)) return false;
    if (version != VERSION || width != static_cast<std::uint32_t>(WORLD_W) ||
        height != static_cast<std::uint32_t>(WORLD_H)) {
        return false;
    }
    return read_u32(f, &scratch->seed) && read_u32(f, stored) && each_body_field(*scratch, Reader{f});
}

bool slot_valid(const InventorySlot& s) {
    if (s.item == 0) return s.count == 0;
    return item_known(s.item) && s.count >= 1 && s.count <= STACK_MAX;
}

bool in_range(float v, float below) { return v >= 0.0f && v < below; }

bool is_regular(int fd) {
    struct stat st {};
    return ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode);
}

// Only a regular file is a save. Opening never waits (a FIFO would block until
// a writer came) and the type is checked on what was opened, not on the name.
std::FILE* open_save_for_reading(const char* path) {
    const int fd = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return nullptr;
    std::FILE* f = is_regular(fd) ? ::fdopen(fd, "rb") : nullptr;
    if (f == nullptr) ::close(fd);
    return f;
}

// True while `fd` is still the file named `name`: another copy may have renamed
// it into place or removed it while this one waited for the lock.
bool still_named(int fd, const char* name) {
    struct stat held {}, named {};
    return ::fstat(fd, &held) == 0 && ::lstat(name, &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

void wait_a_little() {
    const timespec pause{0, LOCK_WAIT_NS};
    ::nanosleep(&pause, nullptr);
}

// Waits for this process's exclusive lock on `fd`: another copy of the game
// may hold it mid-save. Counts the waits in `tries`.
bool wait_for_lock(int fd, int* tries) {
    while (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK || ++*tries >= LOCK_TRIES) return false;
        wait_a_little();
    }
    return true;
}

// Opens the temporary file for writing, emptied and locked for this process
// alone, or returns -1. A link at that name is removed, never followed; a stale
// file from a crash holds no lock and is reused; anything else there (a
// directory, a FIFO) makes the save fail and is left alone.
int open_locked_temporary(const char* tmp) {
    for (int tries = 0; tries < LOCK_TRIES; ++tries) {
        const int fd = ::open(tmp, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
        if (fd < 0) {
            if (errno != ELOOP || ::unlink(tmp) != 0) return -1;
            continue;
        }
        if (!is_regular(fd) || !wait_for_lock(fd, &tries)) {
            ::close(fd);
            return -1;
        }
        // The copy that held the lock may have renamed this file into place: start anew.
        if (still_named(fd, tmp)) {
            if (::ftruncate(fd, 0) == 0) return fd;
            ::close(fd);
            return -1;
        }
        ::close(fd);
    }
    return -1;
}

// A player who made the save private keeps it private; a first save gets what
// the umask gives.
void keep_mode_of(const char* path, int fd) {
    struct stat old {};
    if (::stat(path, &old) == 0 && S_ISREG(old.st_mode)) ::fchmod(fd, old.st_mode & 0777);
}

}  // namespace

std::uint32_t save_checksum(const Game* game) {
    Hasher hasher{FNV1A_OFFSET};
    hasher(game->seed);
    each_body_field(*game, hasher);
    return hasher.h;
}

bool valid_loaded_game(const Game* game) {
    const Player& p = game->player;
    if (!std::isfinite(game->time_of_day) || !in_range(game->time_of_day, 1.0f)) return false;
    if (game->day < 1 || game->day > MAX_DAY) return false;
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return false;
    if (!in_range(p.x, static_cast<float>(WORLD_PIXEL_W)) || !in_range(p.y, static_cast<float>(WORLD_PIXEL_H))) {
        return false;
    }
    if (game->spawn_x < 1 || game->spawn_x > WORLD_W - 2) return false;
    if (game->spawn_y < 1 || game->spawn_y > WORLD_H - 2) return false;
    if (p.max_hp < 1 || p.max_hp > MAX_HP_LIMIT) return false;
    if (p.hp < 1 || p.hp > p.max_hp) return false;
    if (p.selected >= static_cast<std::uint32_t>(HOTBAR_SLOTS)) return false;
    for (const InventorySlot& s : p.inventory) {
        if (!slot_valid(s)) return false;
    }
    for (const std::uint8_t t : game->tiles) {
        if (t > TILE_MAX) return false;
    }
    return true;
}

bool game_save(const Game* game, const char* path) {
    if (game == nullptr || path == nullptr || path[0] == '\0' || !game->world_open) return false;

    // A whole "<path>.tmp" always differs from the path, so fitting is the only test.
    char tmp[TMP_NAME_SIZE];
    const int len = std::snprintf(tmp, sizeof tmp, "%s.tmp", path);
    if (len < 0 || static_cast<std::size_t>(len) >= sizeof tmp) return false;

    const int fd = open_locked_temporary(tmp);
    if (fd < 0) return false;
    std::FILE* f = ::fdopen(fd, "wb");
    if (f == nullptr) {
        ::unlink(tmp);
        ::close(fd);
        return false;
    }
    keep_mode_of(path, fd);
    // The rename happens under the lock: a copy that waited for it then finds
    // the temporary name gone and starts a file of its own.
    const bool written = write_save(f, game) && flush_to_disk(f);
    const bool renamed = written && std::rename(tmp, path) == 0;
    if (!renamed) ::unlink(tmp);
    // After fsync the bytes are on the disk; closing cannot lose them.
    std::fclose(f);
    if (renamed) sync_folder_of(path);
    return renamed;
}

bool game_load(Game* game, const char* path) {
    std::FILE* f = open_save_for_reading(path);
    if (f == nullptr) return false;

    // About 95 KB on the stack: the live record is touched only once all is checked.
    Game scratch;
    std::memset(&scratch, 0, sizeof scratch);
    std::uint32_t stored = 0;
    const bool complete = read_save(f, &scratch, &stored);
    std::fclose(f);
    // The name always ends in NUL in memory, whatever the file held; a name that
    // filled all 32 bytes then no longer matches its checksum.
    scratch.name[NAME_SIZE - 1] = '\0';
    if (!complete || !valid_loaded_game(&scratch) || save_checksum(&scratch) != stored) return false;

    scratch.player.facing = 1;
    scratch.player.mine_x = -1;
    scratch.player.mine_y = -1;
    scratch.screen = SCREEN_PLAYING;
    scratch.running = 1;
    scratch.world_open = 1;
    camera_on_player(&scratch);
    std::memcpy(game, &scratch, sizeof scratch);
    game_notice(game, "WORLD LOADED");
    return true;
}

bool game_save_exists(const char* path) {
    std::FILE* f = open_save_for_reading(path);
    if (f == nullptr) return false;
    std::fclose(f);
    return true;
}
