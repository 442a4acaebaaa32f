// libFuzzer target for the demo reader: any bytes at all, as a demo file. Reading
// must end (frame, end, cut off or refused) without reading outside the input;
// whatever it reads as frames must write back and read again to the same frames.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "app/demo_format.h"
#include "core/game_digest.h"

namespace {

void require(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "fuzz_demo: %s\n", what);
    std::abort();
}

bool same_frame(const DemoFrame& a, const DemoFrame& b) {
    if (a.number != b.number || a.event_count != b.event_count || a.has_digest != b.has_digest || a.digest != b.digest) return false;
    if (std::memcmp(&a.input, &b.input, sizeof a.input) != 0 || std::memcmp(&a.dt, &b.dt, sizeof a.dt) != 0) return false;
    for (std::uint32_t i = 0; i < a.event_count; ++i) {
        const DemoEvent& x = a.events[i];
        const DemoEvent& y = b.events[i];
        if (x.type != y.type || x.flag != y.flag || x.a != y.a || x.b != y.b || std::memcmp(x.text, y.text, sizeof x.text) != 0) return false;
    }
    return true;
}

void put_u32(std::uint8_t* p, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<std::uint8_t>(v >> (8 * i));
}

// Puts right every checksum the bytes have room for, so that mutations reach
// the frames behind them instead of stopping at the first checksum.
void reseal(std::vector<std::uint8_t>* b) {
    std::uint8_t* d = b->data();
    const std::size_t size = b->size();
    if (size < DEMO_HEADER_SIZE) return;
    const std::size_t save = (d[8] & 4) != 0 ? 82180 : 0;
    if (size - DEMO_HEADER_SIZE < save) return;
    put_u32(d + 12, fnv1a(d + DEMO_HEADER_SIZE, save, fnv1a(d, 12)));
    for (std::size_t at = DEMO_HEADER_SIZE + save; size - at >= DEMO_CHUNK_HEAD;) {
        const std::size_t payload = d[at + 1] | std::size_t{d[at + 2]} << 8 | std::size_t{d[at + 3]} << 16 | std::size_t{d[at + 4]} << 24;
        if (size - at - DEMO_CHUNK_HEAD < payload) return;
        put_u32(d + at + 5, fnv1a(d + at + DEMO_CHUNK_HEAD, payload, fnv1a(d + at, 5)));
        at += DEMO_CHUNK_HEAD + payload;
    }
}

void read_and_rewrite(const std::vector<std::uint8_t>& in) {
    static const auto frame = std::make_unique<DemoFrame>();
    static const auto again = std::make_unique<DemoFrame>();
    DemoReader r{};
    DemoStart start{};
    if (demo_open(&r, in.data(), in.size(), &start) != nullptr) return;

    std::vector<std::uint8_t> out;
    demo_write_header(&out, start);
    DemoWriter w{};
    DemoStep step;
    while ((step = demo_next(&r, frame.get())) == DemoStep::Frame) {
        require(frame->number == w.frames + 1, "frames out of order");
        demo_write_frame(&w, frame->events, frame->event_count, frame->input, frame->dt, frame->digest);
        if (w.payload.size() > 4096) demo_seal_chunk(&w, &out);
    }
    require(step != DemoStep::Bad || r.error != nullptr, "refused without a reason");
    if (step == DemoStep::Bad) return;
    demo_seal_chunk(&w, &out);
    demo_write_end(w, r.end_digest, &out);

    // What was read writes back into a demo that reads the same, to its end.
    DemoReader a{};
    DemoReader b{};
    DemoStart sa{};
    DemoStart sb{};
    require(demo_open(&a, in.data(), in.size(), &sa) == nullptr && demo_open(&b, out.data(), out.size(), &sb) == nullptr,
            "header no longer opens");
    require(sa.debug_game == sb.debug_game && sa.autosave_off == sb.autosave_off && sa.has_save == sb.has_save, "start changed");
    for (;;) {
        const DemoStep sa_step = demo_next(&a, frame.get());
        const DemoStep sb_step = demo_next(&b, again.get());
        if (sa_step != DemoStep::Frame) {
            require(sb_step == DemoStep::End && b.frames == a.frames, "rewritten demo ends elsewhere");
            break;
        }
        require(sb_step == DemoStep::Frame && same_frame(*frame, *again), "rewritten frame differs");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The reader works on exact-size copies, so ASan sees any read past the end.
    std::vector<std::uint8_t> in(data, data + size);
    read_and_rewrite(in);
    reseal(&in);
    read_and_rewrite(in);
    return 0;
}
