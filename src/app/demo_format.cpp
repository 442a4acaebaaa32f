#include "app/demo_format.h"

#include <bit>
#include <cmath>
#include <cstring>

#include "core/game_digest.h"
#include "save/save_file.h"

namespace {

using u8 = std::uint8_t;
using u32 = std::uint32_t;
using Bytes = std::vector<u8>;

constexpr u8 MAGIC[4] = {'T', 'V', 'D', 'M'};
constexpr u32 FLAG_DEBUG = 1, FLAG_AUTOSAVE_OFF = 2, FLAG_SAVE = 4, START_FLAGS = 7;
constexpr u8 CHUNK_FRAMES = 'F', CHUNK_END = 'E';

// A frame's first byte says what follows; a frame like the one before costs only it.
constexpr u8 HAS_EVENTS = 1, HAS_KEYS = 2, HAS_POINTER = 4, HAS_DT = 8, HAS_DIGEST = 16, FRAME_FLAGS = 31;

// ---- writing ----

void put_u32(Bytes* out, u32 v) {
    for (int i = 0; i < 4; ++i) out->push_back(static_cast<u8>(v >> (8 * i)));
}

void put_varint(Bytes* out, u32 v) {
    while (v >= 0x80) {
        out->push_back(static_cast<u8>(v | 0x80));
        v >>= 7;
    }
    out->push_back(static_cast<u8>(v));
}

// Small steps either way stay small.
u32 zigzag(std::int32_t v) {
    const u32 u = static_cast<u32>(v);
    return (u << 1) ^ (v < 0 ? 0xFFFFFFFFu : 0u);
}
std::int32_t unzigzag(u32 v) { return static_cast<std::int32_t>((v >> 1) ^ (0u - (v & 1))); }

// The held keys and one-frame flags, one bit each.
u8 key_bits(const FrameInput& in) {
    const u8 flags[8] = {in.left, in.right, in.jump_held, in.down, in.use_held, in.jump_pressed, in.use_pressed, in.place};
    u8 bits = 0;
    for (int i = 0; i < 8; ++i) bits = static_cast<u8>(bits | ((flags[i] != 0 ? 1 : 0) << i));
    return bits;
}

void set_key_bits(FrameInput* in, u8 bits) {
    u8* flags[8] = {&in->left, &in->right, &in->jump_held, &in->down, &in->use_held, &in->jump_pressed, &in->use_pressed, &in->place};
    for (int i = 0; i < 8; ++i) *flags[i] = static_cast<u8>((bits >> i) & 1);
}

void put_event(Bytes* out, const DemoEvent& e) {
    out->push_back(e.type);
    switch (e.type) {
        case DEMO_KEY: put_varint(out, static_cast<u32>(e.a)); out->push_back(e.flag); break;
        case DEMO_TEXT: out->push_back(e.flag); out->insert(out->end(), e.text, e.text + e.flag); break;
        case DEMO_BUTTON: out->push_back(e.flag); put_varint(out, zigzag(e.a)); put_varint(out, zigzag(e.b)); break;
        case DEMO_WHEEL: put_varint(out, zigzag(e.a)); break;
        default: break;
    }
}

}  // namespace

void demo_write_header(Bytes* out, const DemoStart& start) {
    const std::size_t at = out->size();
    out->insert(out->end(), MAGIC, MAGIC + 4);
    put_u32(out, DEMO_VERSION);
    put_u32(out, (start.debug_game ? FLAG_DEBUG : 0) | (start.autosave_off ? FLAG_AUTOSAVE_OFF : 0) |
                     (start.has_save ? FLAG_SAVE : 0));
    u32 sum = fnv1a(out->data() + at, 12);
    if (start.has_save) sum = fnv1a(start.save, SAVE_FILE_SIZE, sum);
    put_u32(out, sum);
    if (start.has_save) out->insert(out->end(), start.save, start.save + SAVE_FILE_SIZE);
}

void demo_write_frame(DemoWriter* w, const DemoEvent* events, u32 count, const FrameInput& input, float dt,
                      u32 digest) {
    Bytes* out = &w->payload;
    w->frames += 1;
    const u32 dt_bits = std::bit_cast<u32>(dt);
    const bool keys = key_bits(input) != key_bits(w->last_input);
    const bool pointer = input.mouse_x != w->last_input.mouse_x || input.mouse_y != w->last_input.mouse_y;
    const bool digest_due = w->frames % DEMO_DIGEST_EVERY == 0;
    out->push_back(static_cast<u8>((count > 0 ? HAS_EVENTS : 0) | (keys ? HAS_KEYS : 0) | (pointer ? HAS_POINTER : 0) |
                                   (dt_bits != w->last_dt_bits ? HAS_DT : 0) | (digest_due ? HAS_DIGEST : 0)));
    if (count > 0) {
        put_varint(out, count);
        for (u32 i = 0; i < count; ++i) put_event(out, events[i]);
    }
    if (keys) out->push_back(key_bits(input));
    if (pointer) {
        put_varint(out, zigzag(static_cast<std::int32_t>(static_cast<u32>(input.mouse_x) - static_cast<u32>(w->last_input.mouse_x))));
        put_varint(out, zigzag(static_cast<std::int32_t>(static_cast<u32>(input.mouse_y) - static_cast<u32>(w->last_input.mouse_y))));
    }
    if (dt_bits != w->last_dt_bits) put_u32(out, dt_bits);
    if (digest_due) put_u32(out, digest);
    w->last_input = input;
    w->last_dt_bits = dt_bits;
}

namespace {

void seal(u8 kind, const Bytes& payload, Bytes* out) {
    const std::size_t at = out->size();
    out->push_back(kind);
    put_u32(out, static_cast<u32>(payload.size()));
    put_u32(out, 0);
    out->insert(out->end(), payload.begin(), payload.end());
    // The checksum covers the kind, the size and the payload.
    u32 sum = fnv1a(out->data() + at, 5);
    sum = fnv1a(out->data() + at + DEMO_CHUNK_HEAD, payload.size(), sum);
    for (int i = 0; i < 4; ++i) (*out)[at + 5 + static_cast<std::size_t>(i)] = static_cast<u8>(sum >> (8 * i));
}

}  // namespace

void demo_seal_chunk(DemoWriter* w, Bytes* out) {
    if (w->payload.empty()) return;
    seal(CHUNK_FRAMES, w->payload, out);
    w->payload.clear();
}

void demo_write_end(const DemoWriter& w, u32 digest, Bytes* out) {
    Bytes payload;
    put_u32(&payload, w.frames);
    put_u32(&payload, digest);
    seal(CHUNK_END, payload, out);
}

// ---- reading ----

namespace {

u32 get_u32(const u8* p) {
    return static_cast<u32>(p[0]) | static_cast<u32>(p[1]) << 8 | static_cast<u32>(p[2]) << 16 | static_cast<u32>(p[3]) << 24;
}

// Reads within the open chunk; every failure names what was wrong.
struct Cursor {
    DemoReader* r;
    bool ok = true;

    bool take(std::size_t n) {
        if (!ok || r->chunk_end - r->pos < n) return fail("demo is corrupted (a frame runs past its chunk)");
        return true;
    }
    bool fail(const char* why) {
        if (ok) r->error = why;
        ok = false;
        return false;
    }
    u8 byte() {
        if (!take(1)) return 0;
        return r->data[r->pos++];
    }
    u32 word() {
        if (!take(4)) return 0;
        const u32 v = get_u32(r->data + r->pos);
        r->pos += 4;
        return v;
    }
    u32 varint() {
        u32 v = 0;
        for (int shift = 0; shift < 35; shift += 7) {
            const u8 b = byte();
            if (shift == 28 && b > 0x0F) fail("demo is corrupted (a number is too long)");
            v |= static_cast<u32>(b & 0x7F) << shift;
            if ((b & 0x80) == 0 || !ok) return v;
        }
        return v;
    }
};

void read_event(Cursor* c, DemoEvent* e) {
    *e = DemoEvent{};
    e->type = c->byte();
    switch (e->type) {
        case DEMO_QUIT: break;
        case DEMO_KEY:
            e->a = static_cast<std::int32_t>(c->varint());
            e->flag = c->byte();
            if (e->flag > 1) c->fail("demo is corrupted (a key's repeat flag)");
            break;
        case DEMO_TEXT:
            e->flag = c->byte();
            if (e->flag > DEMO_TEXT_SIZE) c->fail("demo is corrupted (typed text too long)");
            if (c->take(e->flag)) {
                std::memcpy(e->text, c->r->data + c->r->pos, e->flag);
                c->r->pos += e->flag;
            }
            break;
        case DEMO_BUTTON:
            e->flag = c->byte();
            e->a = unzigzag(c->varint());
            e->b = unzigzag(c->varint());
            break;
        case DEMO_WHEEL: e->a = unzigzag(c->varint()); break;
        default: c->fail("demo is corrupted (an unknown event)"); break;
    }
}

bool read_frame(Cursor* c, DemoFrame* f) {
    DemoReader* r = c->r;
    const u8 flags = c->byte();
    if ((flags & ~FRAME_FLAGS) != 0) return c->fail("demo is corrupted (a frame's flags)");
    f->number = r->frames + 1;
    f->event_count = 0;
    if ((flags & HAS_EVENTS) != 0) {
        f->event_count = c->varint();
        if (f->event_count == 0 || f->event_count > DEMO_MAX_EVENTS) return c->fail("demo is corrupted (an event count)");
        for (u32 i = 0; i < f->event_count && c->ok; ++i) read_event(c, &f->events[i]);
    }
    f->input = r->last_input;
    if ((flags & HAS_KEYS) != 0) set_key_bits(&f->input, c->byte());
    if ((flags & HAS_POINTER) != 0) {
        f->input.mouse_x = static_cast<std::int32_t>(static_cast<u32>(f->input.mouse_x) + static_cast<u32>(unzigzag(c->varint())));
        f->input.mouse_y = static_cast<std::int32_t>(static_cast<u32>(f->input.mouse_y) + static_cast<u32>(unzigzag(c->varint())));
    }
    u32 dt_bits = r->last_dt_bits;
    if ((flags & HAS_DT) != 0) dt_bits = c->word();
    f->dt = std::bit_cast<float>(dt_bits);
    // A measured frame time is never negative, infinite or not a number.
    if (!std::isfinite(f->dt) || f->dt < 0.0f) return c->fail("demo is corrupted (a frame time)");
    f->has_digest = (flags & HAS_DIGEST) != 0;
    if (f->has_digest != (f->number % DEMO_DIGEST_EVERY == 0)) return c->fail("demo is corrupted (digests out of step)");
    f->digest = f->has_digest ? c->word() : 0;
    if (!c->ok) return false;
    r->frames = f->number;
    r->last_input = f->input;
    r->last_dt_bits = dt_bits;
    return true;
}

}  // namespace

const char* demo_open(DemoReader* r, const u8* data, std::size_t size, DemoStart* start) {
    *r = DemoReader{};
    r->data = data;
    r->size = size;
    if (size < 4 || std::memcmp(data, MAGIC, 4) != 0) return "not a TALVEN demo";
    if (size < DEMO_HEADER_SIZE) return "demo is truncated";
    const u32 version = get_u32(data + 4);
    if (version > DEMO_VERSION) return "demo was recorded by a newer version of TALVEN";
    const u32 flags = get_u32(data + 8);
    if (version != DEMO_VERSION || (flags & ~START_FLAGS) != 0) return "demo is corrupted (its header)";
    start->debug_game = (flags & FLAG_DEBUG) != 0;
    start->autosave_off = (flags & FLAG_AUTOSAVE_OFF) != 0;
    start->has_save = (flags & FLAG_SAVE) != 0;
    const std::size_t save_size = start->has_save ? SAVE_FILE_SIZE : 0;
    if (size - DEMO_HEADER_SIZE < save_size) return "demo is truncated";
    start->save = start->has_save ? data + DEMO_HEADER_SIZE : nullptr;
    u32 sum = fnv1a(data, 12);
    if (start->has_save) sum = fnv1a(start->save, save_size, sum);
    if (sum != get_u32(data + 12)) return "demo is corrupted (its header checksum)";
    r->pos = r->chunk_end = DEMO_HEADER_SIZE + save_size;
    return nullptr;
}

DemoStep demo_next(DemoReader* r, DemoFrame* frame) {
    Cursor c{r};
    if (r->pos == r->chunk_end) {
        // Open the next chunk: a missing or partial one means the recording stopped there.
        const std::size_t left = r->size - r->pos;
        if (left < DEMO_CHUNK_HEAD) return DemoStep::CutOff;
        const u8* head = r->data + r->pos;
        const u32 payload = get_u32(head + 1);
        if (head[0] != CHUNK_FRAMES && head[0] != CHUNK_END) return c.fail("demo is corrupted (a chunk's kind)"), DemoStep::Bad;
        if (payload > DEMO_MAX_CHUNK) return c.fail("demo is corrupted (a chunk's size)"), DemoStep::Bad;
        if (left - DEMO_CHUNK_HEAD < payload) return DemoStep::CutOff;
        u32 sum = fnv1a(head, 5);
        sum = fnv1a(head + DEMO_CHUNK_HEAD, payload, sum);
        if (sum != get_u32(head + 5)) return c.fail("demo is corrupted (a chunk's checksum)"), DemoStep::Bad;
        r->pos += DEMO_CHUNK_HEAD;
        r->chunk_end = r->pos + payload;
        if (head[0] == CHUNK_END) {
            const u32 frames = payload == 8 ? c.word() : 0;
            r->end_digest = payload == 8 ? c.word() : 0;
            if (payload != 8 || frames != r->frames) return c.fail("demo is corrupted (its closing record)"), DemoStep::Bad;
            if (r->pos != r->size) return c.fail("demo is corrupted (bytes after its closing record)"), DemoStep::Bad;
            return DemoStep::End;
        }
    }
    return read_frame(&c, frame) ? DemoStep::Frame : DemoStep::Bad;
}
