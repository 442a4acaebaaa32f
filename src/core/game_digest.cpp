#include "core/game_digest.h"

#include <bit>

// A field added to the record must be fed to the digest too: these sizes flag it.
static_assert(sizeof(Game) == 86272 && sizeof(Player) == 216 && sizeof(Creature) == 40 && sizeof(Drop) == 32);

namespace {

// Feeds each value as its little-endian bytes, whatever the machine's order.
struct Digest {
    std::uint32_t h = FNV1A_OFFSET;

    void bytes(const void* data, std::size_t size) { h = fnv1a(data, size, h); }
    void u(std::uint64_t v, int size) {
        for (int i = 0; i < size; ++i) {
            const auto b = static_cast<std::uint8_t>(v >> (8 * i));
            h = fnv1a(&b, 1, h);
        }
    }
    void u8(std::uint8_t v) { u(v, 1); }
    void u16(std::uint16_t v) { u(v, 2); }
    void u32(std::uint32_t v) { u(v, 4); }
    void i32(std::int32_t v) { u(static_cast<std::uint32_t>(v), 4); }
    void u64(std::uint64_t v) { u(v, 8); }
    void f32(float v) { u(std::bit_cast<std::uint32_t>(v), 4); }

    void player(const Player& p) {
        f32(p.x); f32(p.y); f32(p.vx); f32(p.vy);
        i32(p.hp); i32(p.max_hp); i32(p.facing); u8(p.on_ground);
        f32(p.hurt_timer); f32(p.attack_cooldown); f32(p.mine_progress);
        i32(p.mine_x); i32(p.mine_y); u32(p.selected);
        for (const InventorySlot& s : p.inventory) { u16(s.item); u16(s.count); }
    }
    void creature(const Creature& c) {
        f32(c.x); f32(c.y); f32(c.vx); f32(c.vy);
        i32(c.hp); i32(c.kind); i32(c.dir); f32(c.hit_cooldown); f32(c.flash);
        u8(c.alive); u8(c.on_ground);
    }
    void drop(const Drop& d) {
        f32(d.x); f32(d.y); f32(d.vx); f32(d.vy);
        u32(d.item); u32(d.count); f32(d.lifetime); u8(d.active);
    }
};

}  // namespace

std::uint32_t fnv1a(const void* bytes, std::size_t size, std::uint32_t h) {
    const auto* b = static_cast<const std::uint8_t*>(bytes);
    for (std::size_t i = 0; i < size; ++i) h = (h ^ b[i]) * FNV1A_PRIME;
    return h;
}

std::uint32_t game_digest(const Game* game) {
    const Game& g = *game;
    Digest d;
    d.bytes(g.tiles, sizeof g.tiles);
    d.u32(g.seed);
    d.bytes(g.name, sizeof g.name);
    d.f32(g.time_of_day);
    d.u32(g.day);
    d.u64(g.tick);
    d.player(g.player);
    for (const Creature& c : g.creatures) d.creature(c);
    for (const Drop& x : g.drops) d.drop(x);
    d.f32(g.camera_x); d.f32(g.camera_y);
    d.u32(g.screen); d.u32(g.menu_cursor); d.u32(g.form_focus); d.u32(g.craft_cursor);
    d.i32(g.spawn_x); d.i32(g.spawn_y);
    d.f32(g.creature_spawn_timer); d.f32(g.autosave_timer); d.f32(g.notice_timer);
    d.bytes(g.notice, sizeof g.notice);
    d.u8(g.running); d.u8(g.world_open); d.u8(g.autosave_off);
    return d.h;
}
