// Demos: sessions recorded from real play still replay to the same digests, a
// recording replays in a window and headless, a changed frame shows where it
// first bites, and every damaged demo is refused with one line.

#include <sys/stat.h>

#include <array>
#include <cstring>

#include "app/demo.h"
#include "app/demo_format.h"
#include "app/app_support.h"
#include "core/game_digest.h"
#include "save/save_support.h"

using namespace save_test;
using app_test::Outcome;

namespace {

fs::path scratch() { return app_test::scratch("demo"); }
fs::path player_save() { return scratch() / "home" / "duskwell" / "talven" / "talven_world.tvw"; }

// The program in scratch() with `save` as the player's save file, which no run here
// may change. `shell`: commands run first.
Outcome talven(const std::string& args, const Bytes& save = {}, const std::string& shell = "") {
    fs::create_directories(player_save().parent_path());
    if (!save.empty()) write_bytes(player_save(), save);
    const Outcome r = app_test::run_talven(args, shell, scratch(), scratch() / "home");
    EXPECT_EQ(save, read_bytes(player_save())) << "the player's save changed: " << args;
    fs::remove_all(scratch() / "home");
    return r;
}

Bytes read_demo(const char* name) { return read_bytes(fs::path(TALVEN_DEMO_DIR) / name); }

// Replays `bytes` from a scratch file whose name reads "FILE" in the output.
Outcome replay(const Bytes& bytes, const std::string& mode = "--verify") {
    const std::string file = (scratch() / "replay.tvd").string();
    fs::create_directories(scratch());
    write_bytes(file, bytes);
    Outcome r = talven("--replay '" + file + "' " + mode);
    for (std::string* text : {&std::get<1>(r), &std::get<2>(r)})
        if (const auto at = text->find(file); at != std::string::npos) text->replace(at, file.size(), "FILE");
    return r;
}

void put_u32(Bytes* b, std::size_t at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) (*b)[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(v >> (8 * i));
}

// Damage that the chunk checksum must not catch: recompute it.
void reseal_chunk(Bytes* b, std::size_t at) {
    const std::size_t size = (*b)[at + 1] | static_cast<std::size_t>((*b)[at + 2]) << 8;
    put_u32(b, at + 5, fnv1a(b->data() + at + 9, size, fnv1a(b->data() + at, 5)));
}

// Every frame of a demo written again into one chunk, with `change` applied to
// each, then `more` quiet frames.
Bytes rewrite(const Bytes& in, const std::function<void(DemoFrame*)>& change, int more) {
    DemoReader r{};
    DemoStart start{};
    EXPECT_EQ(nullptr, demo_open(&r, in.data(), in.size(), &start));
    Bytes out;
    demo_write_header(&out, start);
    DemoWriter w{};
    const auto f = std::make_unique<DemoFrame>();
    while (demo_next(&r, f.get()) == DemoStep::Frame) {
        change(f.get());
        demo_write_frame(&w, f->events, f->event_count, f->input, f->dt, f->digest);
    }
    for (int i = 0; i < more; ++i) demo_write_frame(&w, nullptr, 0, f->input, f->dt, 0);
    demo_seal_chunk(&w, &out);
    demo_write_end(w, r.end_digest, &out);
    return out;
}

}  // namespace

TEST(Demo, RecordedSessionsReplayWithEveryDigestMatchingAndNeverTouchTheSave) {
    const std::pair<const char*, int> sessions[] = {
        {"night_fight.tvd", 957}, {"glow_crystal_iron_pick.tvd", 1309},
        {"death_and_respawn.tvd", 414}, {"save_and_load_menus.tvd", 330}, {"inventory_clicks.tvd", 124},
        {"screens_tour.tvd", 2069},  // every screen by keys, held keys, clicks and wheel, as in screens_test
    };
    for (const auto& [name, frames] : sessions) {
        EXPECT_EQ(Outcome(0, "demo FILE: " + std::to_string(frames) + " frames, every digest matches\n", ""),
                  replay(read_demo(name))) << name;
    }
}

TEST(Demo, ARecordingReplaysInAWindowAndHeadless) {
    const std::string file = (scratch() / "rec.tvd").string();
    // From the title, and from the debug world with its autosave off (a screenshot run).
    for (const std::string& start : {std::string(), "--debug-game --screenshot '" + file + ".bmp' "}) {
        EXPECT_EQ(0, std::get<0>(talven(start + "--max-frames 65 --record '" + file + "'", {}, "umask 022; "))) << start;
        EXPECT_EQ(fs::perms(0644), fs::status(file).permissions());  // as any file the player makes
        EXPECT_EQ(Outcome(0, "demo " + file + ": 65 frames, every digest matches\n", ""), talven("--replay '" + file + "' --verify"));
    }
    fs::remove(file + ".bmp");
    EXPECT_EQ(0, std::get<0>(talven("--replay '" + file + "' --max-frames 20 --screenshot '" + file + ".bmp'")));
    EXPECT_EQ(640u * 360u * 4u + 122u, fs::file_size(file + ".bmp"));
    // The save found at the start goes in only when it loads: one that does not plays like none.
    const Bytes death = read_demo("death_and_respawn.tvd");
    Bytes save(death.begin() + 16, death.begin() + 16 + 82180);
    for (const bool good : {true, false}) {
        if (!good) save[100] ^= 1;
        talven("--max-frames 2 --record '" + file + "'", save);
        // Header, save, one chunk of two frames (the first with its frame time), the closing record.
        EXPECT_EQ((good ? 16u + 82180u : 16u) + (9u + 5u + 1u) + (9u + 8u), fs::file_size(file)) << good;
    }
    // A recording that cannot start says why, starts nothing and leaves nothing.
    const std::string nowhere = (scratch() / "no" / "x.tvd").string();
    const std::string home_save = player_save().string();
    const std::array<std::string, 3> refused[] = {
        {nowhere, "", "cannot record to " + nowhere + ": No such file or directory"},
        {home_save, "", "cannot record to " + home_save + ": that is the save file"},
        {file, "trap '' XFSZ; ulimit -f 0; ", "recording to " + file + " stopped: File too large"},
    };
    for (const auto& [to, limits, says] : refused) {
        fs::remove(file);
        EXPECT_EQ(Outcome(1, "", "TALVEN: " + says + "\n"), talven("--debug-game --max-frames 5 --record '" + to + "'", save, limits));
        EXPECT_EQ(false, fs::exists(file)) << says;
    }
}

// What the screens read of each event, kept exactly, extremes included.
TEST(Demo, TheRecorderKeepsWhatTheScreensRead) {
    const std::string file = (scratch() / "events.tvd").string();
    fs::create_directories(scratch());
    RunOptions opts{};
    opts.record = file.c_str();
    DemoSession demo{};
    const auto game = std::make_unique<Game>();
    game->running = 1;
    ASSERT_TRUE(demo_session_open(&demo, &opts));
    ASSERT_TRUE(demo_session_start(&demo, game.get()));

    SDL_Event ev[8]{};
    ev[0].type = SDL_QUIT;
    ev[1].type = SDL_KEYDOWN, ev[1].key.keysym.sym = -1, ev[1].key.repeat = 1;
    ev[2].type = SDL_KEYUP;  // the screens ignore it
    ev[3].type = SDL_TEXTINPUT, std::memset(ev[3].text.text, 'x', sizeof ev[3].text.text);
    ev[4].type = SDL_MOUSEBUTTONDOWN, ev[4].button.button = 3, ev[4].button.x = INT32_MIN, ev[4].button.y = INT32_MAX;
    ev[5].type = SDL_MOUSEWHEEL, ev[5].wheel.y = -7;
    ev[6].type = SDL_MOUSEMOTION;
    ev[7].type = SDL_KEYDOWN, ev[7].key.keysym.sym = SDLK_e;
    for (const SDL_Event& e : ev) demo_record_event(demo.recorder, &e);
    const FrameInput input{1, 0, 0, 1, 0, 1, 0, 1, -5, 0};  // a pointer step of 0 is one byte
    for (int frame = 1; frame <= 60; ++frame) {
        game->running = frame < 60;  // the last frame quits
        demo_record_frame(demo.recorder, &input, 0.02f, game.get());
    }
    game->running = 1;  // the closing digest still sees the last frame's 0
    ASSERT_TRUE(demo_session_close(&demo, game.get(), opts));

    // Read back and written again it comes out byte for byte, and those bytes are pinned:
    // a frame like the one before costs one byte, a digest four more.
    const Bytes bytes = read_bytes(file);
    EXPECT_EQ(16u + 9u + (68u + 58u + 5u) + 9u + 8u, bytes.size());
    EXPECT_EQ(bytes, rewrite(bytes, [](DemoFrame*) {}, 0));
    EXPECT_EQ(0xF63938D8u, fnv1a(bytes.data(), bytes.size()));

    // More events in one frame than a demo holds: the recording stops, and says so.
    ASSERT_TRUE(demo_session_open(&demo, &opts));
    ASSERT_TRUE(demo_session_start(&demo, game.get()));
    for (std::uint32_t i = 0; i <= DEMO_MAX_EVENTS; ++i) demo_record_event(demo.recorder, &ev[0]);
    demo_record_frame(demo.recorder, &input, 0.02f, game.get());
    EXPECT_EQ(false, demo_session_close(&demo, game.get(), opts));
}

TEST(Demo, AChangedFrameDivergesAtTheNextDigest) {
    // Frame 10 of play takes a longer time step; the digest of frame 60 is the first to see it.
    const auto slower = [](DemoFrame* f) { f->dt = f->number == 10 ? 0.05f : f->dt; };
    // Without the QUIT of its last frame the run goes on: only the closing record sees it.
    const auto no_quit = [](DemoFrame* f) { f->event_count = f->number == 330 ? 0 : f->event_count; };
    // Keys held down to repeat: the menus act on a first press only.
    const auto repeats = [](DemoFrame* f) {
        for (std::uint32_t i = 0; i < f->event_count; ++i) f->events[i].flag = f->events[i].type == DEMO_KEY;
    };
    const struct {
        std::function<void(DemoFrame*)> change;
        int more;  // quiet frames after the end: the replayed run quits while the demo goes on
        const char* mode;
        int frame;
    } cases[] = {
        {slower, 0, "--verify", 60}, {slower, 0, "--max-frames 61", 60}, {no_quit, 0, "--verify", 330},
        {[](DemoFrame*) {}, 5, "--verify", 331}, {repeats, 0, "--verify", 60},
    };
    const Bytes menus = read_demo("save_and_load_menus.tvd");
    for (const auto& c : cases) {
        EXPECT_EQ(Outcome(1, "", "demo diverges at frame " + std::to_string(c.frame) + "\n"),
                  replay(rewrite(menus, c.change, c.more), c.mode));
    }
}

TEST(Demo, DamagedDemosAreRefusedWithOneLine) {
    const Bytes menus = read_demo("save_and_load_menus.tvd");
    const std::size_t first_chunk = DEMO_HEADER_SIZE;
    const std::string cut_off = "cut off (the recording never closed); replay it without --verify";
    const std::pair<std::function<void(Bytes*)>, std::string> damaged[] = {
        {[](Bytes* b) { b->clear(); }, "not a TALVEN demo"},
        {[](Bytes* b) { (*b)[3] = '1'; }, "not a TALVEN demo"},
        {[](Bytes* b) { b->resize(10); }, "demo is truncated"},
        {[](Bytes* b) { (*b)[4] = 2; }, "demo was recorded by a newer version of TALVEN"},
        {[](Bytes* b) { (*b)[4] = 0; }, "demo is corrupted (its header)"},
        {[](Bytes* b) { (*b)[8] |= 8; }, "demo is corrupted (its header)"},
        {[](Bytes* b) { (*b)[8] |= 4; }, "demo is truncated"},  // says it holds a save
        {[](Bytes* b) { (*b)[13] ^= 1; }, "demo is corrupted (its header checksum)"},
        {[](Bytes* b) { (*b)[40] ^= 0x10; }, "demo is corrupted (a chunk's checksum)"},
        {[&](Bytes* b) { (*b)[first_chunk] = 'X'; }, "demo is corrupted (a chunk's kind)"},
        {[&](Bytes* b) { put_u32(b, first_chunk + 1, 1u << 21); }, "demo is corrupted (a chunk's size)"},
        {[](Bytes* b) { b->resize(b->size() - 3); }, cut_off},
        {[](Bytes* b) { b->resize(b->size() - 17); }, cut_off},  // no closing record
        {[](Bytes* b) { (*b)[b->size() - 8] ^= 1; reseal_chunk(b, b->size() - 17); }, "demo is corrupted (its closing record)"},
        {[](Bytes* b) { b->push_back(0); }, "demo is corrupted (bytes after its closing record)"},
        {[&](Bytes* b) { (*b)[first_chunk + 9] |= 0x80; reseal_chunk(b, first_chunk); }, "demo is corrupted (a frame's flags)"},
        {[&](Bytes* b) { (*b)[first_chunk + 9] |= 0x10; reseal_chunk(b, first_chunk); }, "demo is corrupted (digests out of step)"},
    };
    for (const auto& [damage, says] : damaged) {
        Bytes bytes = menus;
        damage(&bytes);
        EXPECT_EQ(Outcome(1, "", "TALVEN: demo FILE: " + says + "\n"), replay(bytes));
    }

    // One chunk with one damaged frame, under a good checksum.
    const std::pair<Bytes, const char*> frames[] = {
        {{0x01}, "a frame runs past its chunk"},
        {{0x01, 0x00}, "an event count"},
        {{0x01, 0x81, 0x08}, "an event count"},
        {{0x01, 0xFF, 0xFF, 0xFF, 0xFF, 0x1F}, "a number is too long"},
        {{0x01, 0x01, 0x09}, "an unknown event"},
        {{0x01, 0x01, 0x01, 0x00, 0x02}, "a key's repeat flag"},
        {{0x01, 0x01, 0x02, 33}, "typed text too long"},
        {{0x08, 0x00, 0x00, 0x80, 0x7F}, "a frame time"},
        {{0x08, 0x00, 0x00, 0x80, 0xBF}, "a frame time"},
    };
    for (const auto& [payload, says] : frames) {
        Bytes bytes;
        demo_write_header(&bytes, DemoStart{});
        DemoWriter w{};
        w.payload = payload;
        demo_seal_chunk(&w, &bytes);
        EXPECT_EQ(Outcome(1, "", "TALVEN: demo FILE: demo is corrupted (" + std::string(says) + ")\n"), replay(bytes));
    }

    // Cut right after its save, before any frame: cut off like any other.
    Bytes death = read_demo("death_and_respawn.tvd");
    EXPECT_EQ(Outcome(1, "", "TALVEN: demo FILE: " + cut_off + "\n"),
              replay(Bytes(death.begin(), death.begin() + DEMO_HEADER_SIZE + 82180)));
    // A save inside the demo that the save loader refuses (a wrong save version), under a good header checksum.
    death[DEMO_HEADER_SIZE + 4] ^= 1;
    put_u32(&death, 12, fnv1a(death.data() + 16, 82180, fnv1a(death.data(), 12)));
    EXPECT_EQ(Outcome(1, "", "TALVEN: demo FILE: its save file is refused by the save loader\n"), replay(death, ""));

    // Not a file one can read whole: missing, a folder, a FIFO, a 2 GB file.
    fs::create_directories(scratch() / "folder.tvd");
    ::mkfifo((scratch() / "fifo.tvd").c_str(), 0600);
    for (const auto& [name, size] : {std::pair("huge.tvd", 2ull << 30), std::pair("over.tvd", DEMO_MAX_FILE + 1ull)}) {
        write_bytes(scratch() / name, menus);
        fs::resize_file(scratch() / name, size);
    }
    const std::pair<const char*, const char*> files[] = {
        {"missing.tvd", "No such file or directory"}, {"folder.tvd", "not a regular file"},
        {"fifo.tvd", "not a regular file"}, {"huge.tvd", "too large"}, {"over.tvd", "too large"},
    };
    for (const auto& [name, says] : files) {
        const std::string file = (scratch() / name).string();
        EXPECT_EQ(Outcome(1, "", "TALVEN: demo " + file + ": " + says + "\n"), talven("--replay '" + file + "'"));
    }

    // A recording cut off by a crash still plays, up to its last whole chunk.
    const auto [code, out, err] = replay(Bytes(menus.begin(), menus.end() - 3), "--max-frames 5");
    EXPECT_EQ(std::pair(0, 0ul), std::pair(code, err.rfind("TALVEN: demo FILE: cut off after frame ", 0))) << err;
}
