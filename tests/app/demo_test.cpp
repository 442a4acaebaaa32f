// Demos: sessions recorded from real play still replay to the same digests, a
// recording replays in a window and headless, a changed frame shows where it
// first bites, and every damaged demo is refused with one line.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstring>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "app/demo.h"
#include "app/demo_format.h"
#include "core/game_digest.h"

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

namespace {

struct Outcome {
    int exit_code;
    std::string output;
    bool saved;  // the player's save exists in the scratch data folder afterwards
};

const fs::path SCRATCH = fs::temp_directory_path() / ("talven-demo-" + std::to_string(::getpid()));

// `save`: the player's save file before the run; `limits`: shell commands run first.
Outcome talven(const std::string& args, const std::vector<std::uint8_t>& save = {}, const std::string& limits = "") {
    const fs::path home = SCRATCH / "home";
    fs::create_directories(home / "duskwell" / "talven");
    if (!save.empty()) {
        std::ofstream(home / "duskwell" / "talven" / "talven_world.tvw", std::ios::binary)
            .write(reinterpret_cast<const char*>(save.data()), static_cast<std::streamsize>(save.size()));
    }
    const std::string cmd = "cd '" + SCRATCH.string() + "' && " + limits + "env XDG_DATA_HOME='" + home.string() +
                            "' SDL_VIDEODRIVER=dummy '" TALVEN_EXE "' " + args + " 2>&1";
    Outcome r{-1, {}, false};
    FILE* pipe = ::popen(cmd.c_str(), "r");
    std::array<char, 512> buf{};
    for (size_t n; (n = std::fread(buf.data(), 1, buf.size(), pipe)) > 0;) r.output.append(buf.data(), n);
    const int status = ::pclose(pipe);
    r.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.saved = fs::exists(home / "duskwell" / "talven" / "talven_world.tvw");
    fs::remove_all(home);
    return r;
}

fs::path demo(const char* name) { return fs::path(TALVEN_DEMO_DIR) / name; }

Bytes read_all(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

fs::path write_scratch(const char* name, const Bytes& bytes) {
    fs::create_directories(SCRATCH);
    const fs::path p = SCRATCH / name;
    std::ofstream(p, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return p;
}

void put_u32(Bytes* b, std::size_t at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) (*b)[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(v >> (8 * i));
}

// Damage that the checksums must not catch: recompute the header's or a chunk's.
void reseal_header(Bytes* b, std::size_t save_size) {
    put_u32(b, 12, fnv1a(b->data() + 16, save_size, fnv1a(b->data(), 12)));
}
void reseal_chunk(Bytes* b, std::size_t at) {
    const std::size_t size = (*b)[at + 1] | static_cast<std::size_t>((*b)[at + 2]) << 8;
    put_u32(b, at + 5, fnv1a(b->data() + at + 9, size, fnv1a(b->data() + at, 5)));
}

// Every frame of a demo written again into one chunk, with `change` applied to
// each, then `more` quiet frames.
Bytes rewrite(const Bytes& in, const std::function<void(DemoFrame*)>& change, int more = 0) {
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
    };
    for (const auto& [name, frames] : sessions) {
        const std::string path = demo(name).string();
        const Outcome r = talven("--replay '" + path + "' --verify");
        EXPECT_EQ(0, r.exit_code) << name;
        EXPECT_EQ("demo " + path + ": " + std::to_string(frames) + " frames, every digest matches\n", r.output);
        EXPECT_FALSE(r.saved) << name << " saved into the player's folder";
    }
}

TEST(Demo, ARecordingReplaysInAWindowAndHeadless) {
    const std::string file = (SCRATCH / "rec.tvd").string();
    // From the title, and from the debug world with its autosave off (a screenshot run).
    for (const std::string& start : {std::string(), "--debug-game --screenshot '" + file + ".bmp' "}) {
        const Outcome rec = talven(start + "--max-frames 65 --record '" + file + "'");
        EXPECT_EQ(0, rec.exit_code) << rec.output;
        EXPECT_EQ("demo " + file + ": 65 frames, every digest matches\n", talven("--replay '" + file + "' --verify").output) << start;
    }
    fs::remove(file + ".bmp");
    const Outcome windowed = talven("--replay '" + file + "' --max-frames 20 --screenshot '" + file + ".bmp'");
    EXPECT_EQ(0, windowed.exit_code) << windowed.output;
    EXPECT_EQ(640u * 360u * 4u + 122u, fs::file_size(file + ".bmp"));
    // The save found at the start goes in only when it loads: one that does not plays like none.
    Bytes save = read_all(demo("death_and_respawn.tvd"));
    save = Bytes(save.begin() + 16, save.begin() + 16 + 82180);
    for (const bool good : {true, false}) {
        if (!good) save[100] ^= 1;
        talven("--max-frames 2 --record '" + file + "'", save);
        // Header, save, one chunk of two frames (the first with its frame time), the closing record.
        EXPECT_EQ((good ? 16u + 82180u : 16u) + (9u + 5u + 1u) + (9u + 8u), fs::file_size(file)) << good;
    }
    // A recording that cannot start says why, starts nothing and leaves nothing.
    const std::string home_save = (SCRATCH / "home" / "duskwell" / "talven" / "talven_world.tvw").string();
    const struct {
        std::string file, limits, says;
    } refused[] = {
        {(SCRATCH / "no" / "x.tvd").string(), "", "cannot record to " + (SCRATCH / "no" / "x.tvd").string() + ": No such file or directory"},
        {home_save, "", "cannot record to " + home_save + ": that is the save file"},
        {file, "trap '' XFSZ; ulimit -f 0; ", "recording to " + file + " stopped: File too large"},
    };
    for (const auto& c : refused) {
        fs::remove(file);
        const Outcome bad = talven("--debug-game --max-frames 5 --record '" + c.file + "'", save, c.limits);
        EXPECT_EQ(1, bad.exit_code) << c.says;
        EXPECT_EQ("TALVEN: " + c.says + "\n", bad.output);
        EXPECT_EQ(false, fs::exists(file)) << c.says;
    }
}

// What the screens read of each event, kept exactly, extremes included; a frame
// like the one before costs one byte, a digest four more.
TEST(Demo, TheRecorderKeepsWhatTheScreensRead) {
    const std::string file = (SCRATCH / "events.tvd").string();
    fs::create_directories(SCRATCH);
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
    const FrameInput input{1, 0, 0, 1, 0, 1, 0, 1, -5, 400};
    for (int frame = 1; frame <= 60; ++frame) {
        game->running = frame < 60;  // the last frame quits
        demo_record_frame(demo.recorder, &input, 0.02f, game.get());
    }
    game->running = 1;  // the closing digest still sees the last frame's 0
    ASSERT_TRUE(demo_session_close(&demo, game.get(), opts));
    game->running = 0;

    const Bytes bytes = read_all(file);
    EXPECT_EQ(16u + 9u + (69u + 58u + 5u) + 9u + 8u, bytes.size());
    DemoReader r{};
    DemoStart start{};
    ASSERT_EQ(nullptr, demo_open(&r, bytes.data(), bytes.size(), &start));
    EXPECT_EQ(false, start.has_save);
    const auto f = std::make_unique<DemoFrame>();
    ASSERT_EQ(DemoStep::Frame, demo_next(&r, f.get()));
    const DemoEvent want[6] = {{DEMO_QUIT, 0, 0, 0, {}}, {DEMO_KEY, 1, -1, 0, {}}, {DEMO_TEXT, 32, 0, 0, {}},
                               {DEMO_BUTTON, 3, INT32_MIN, INT32_MAX, {}}, {DEMO_WHEEL, 0, -7, 0, {}},
                               {DEMO_KEY, 0, SDLK_e, 0, {}}};
    ASSERT_EQ(6u, f->event_count);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(want[i].type, f->events[i].type) << i;
        EXPECT_EQ(want[i].flag, f->events[i].flag) << i;
        EXPECT_EQ(want[i].a, f->events[i].a) << i;
        EXPECT_EQ(want[i].b, f->events[i].b) << i;
    }
    EXPECT_EQ(std::string(32, 'x'), std::string(f->events[2].text, 32));
    for (int frame = 2; frame <= 60; ++frame) ASSERT_EQ(DemoStep::Frame, demo_next(&r, f.get()));
    EXPECT_EQ(0, std::memcmp(&input, &f->input, sizeof input));
    EXPECT_EQ(0.02f, f->dt);
    EXPECT_EQ(game_digest(game.get()), f->digest);
    EXPECT_EQ(DemoStep::End, demo_next(&r, f.get()));
    EXPECT_EQ(game_digest(game.get()), r.end_digest);

    // More events in one frame than a demo holds: the recording stops, and says so.
    ASSERT_TRUE(demo_session_open(&demo, &opts));
    ASSERT_TRUE(demo_session_start(&demo, game.get()));
    for (std::uint32_t i = 0; i <= DEMO_MAX_EVENTS; ++i) demo_record_event(demo.recorder, &ev[0]);
    demo_record_frame(demo.recorder, &input, 0.02f, game.get());
    EXPECT_EQ(false, demo_session_close(&demo, game.get(), opts));
}

TEST(Demo, AChangedFrameDivergesAtTheNextDigest) {
    const Bytes menus = read_all(demo("save_and_load_menus.tvd"));
    const std::string same = write_scratch("same.tvd", rewrite(menus, [](DemoFrame*) {})).string();
    EXPECT_EQ("demo " + same + ": 330 frames, every digest matches\n", talven("--replay '" + same + "' --verify").output);
    // Frame 10 of play takes a longer time step; the digest of frame 60 is the first to see it.
    const std::string changed = write_scratch("changed.tvd", rewrite(menus, [](DemoFrame* f) {
                                    if (f->number == 10) f->dt = 0.05f;
                                })).string();
    for (const char* mode : {" --verify", " --max-frames 61"}) {
        const Outcome r = talven("--replay '" + changed + "'" + mode);
        EXPECT_EQ(1, r.exit_code) << mode;
        EXPECT_EQ("demo diverges at frame 60\n", r.output) << mode;
    }
    // Without the QUIT of its last frame the run goes on: only the closing record sees it.
    const std::string no_quit = write_scratch("no_quit.tvd", rewrite(menus, [](DemoFrame* f) {
                                    if (f->number == 330) f->event_count = 0;
                                })).string();
    EXPECT_EQ("demo diverges at frame 330\n", talven("--replay '" + no_quit + "' --verify").output);
    // The replayed run quits while the demo goes on.
    const std::string longer = write_scratch("longer.tvd", rewrite(menus, [](DemoFrame*) {}, 5)).string();
    EXPECT_EQ("demo diverges at frame 331\n", talven("--replay '" + longer + "' --verify").output);
    // Keys held down to repeat: the menus act on a first press only.
    const std::string repeats = write_scratch("repeats.tvd", rewrite(menus, [](DemoFrame* f) {
                                    for (std::uint32_t i = 0; i < f->event_count; ++i) f->events[i].flag = f->events[i].type == DEMO_KEY;
                                })).string();
    EXPECT_EQ("demo diverges at frame 60\n", talven("--replay '" + repeats + "' --verify").output);
}

TEST(Demo, DamagedDemosAreRefusedWithOneLine) {
    const Bytes menus = read_all(demo("save_and_load_menus.tvd"));
    const std::size_t first_chunk = DEMO_HEADER_SIZE;
    struct Case {
        const char* name;
        std::function<void(Bytes*)> damage;
        const char* says;  // after "TALVEN: demo FILE: "
    };
    const Case cases[] = {
        {"empty", [](Bytes* b) { b->clear(); }, "not a TALVEN demo"},
        {"foreign", [](Bytes* b) { (*b)[3] = '1'; }, "not a TALVEN demo"},
        {"cut in its header", [](Bytes* b) { b->resize(10); }, "demo is truncated"},
        {"newer", [](Bytes* b) { (*b)[4] = 2; }, "demo was recorded by a newer version of TALVEN"},
        {"older", [](Bytes* b) { (*b)[4] = 0; }, "demo is corrupted (its header)"},
        {"start flag", [](Bytes* b) { (*b)[8] |= 8; }, "demo is corrupted (its header)"},
        {"says it has a save", [](Bytes* b) { (*b)[8] |= 4; }, "demo is truncated"},
        {"header checksum", [](Bytes* b) { (*b)[13] ^= 1; }, "demo is corrupted (its header checksum)"},
        {"frame byte", [](Bytes* b) { (*b)[40] ^= 0x10; }, "demo is corrupted (a chunk's checksum)"},
        {"chunk kind", [&](Bytes* b) { (*b)[first_chunk] = 'X'; }, "demo is corrupted (a chunk's kind)"},
        {"chunk size", [&](Bytes* b) { put_u32(b, first_chunk + 1, 1u << 21); }, "demo is corrupted (a chunk's size)"},
        {"cut mid-chunk", [](Bytes* b) { b->resize(b->size() - 3); }, "cut off (the recording never closed); replay it without --verify"},
        {"no closing record", [](Bytes* b) { b->resize(b->size() - 17); }, "cut off (the recording never closed); replay it without --verify"},
        {"closing count", [](Bytes* b) { (*b)[b->size() - 8] ^= 1; reseal_chunk(b, b->size() - 17); }, "demo is corrupted (its closing record)"},
        {"bytes after the end", [](Bytes* b) { b->push_back(0); }, "demo is corrupted (bytes after its closing record)"},
        {"frame flags", [&](Bytes* b) { (*b)[first_chunk + 9] |= 0x80; reseal_chunk(b, first_chunk); }, "demo is corrupted (a frame's flags)"},
        {"digest out of step", [&](Bytes* b) { (*b)[first_chunk + 9] |= 0x10; reseal_chunk(b, first_chunk); }, "demo is corrupted (digests out of step)"},
    };
    for (const Case& c : cases) {
        Bytes bytes = menus;
        c.damage(&bytes);
        const std::string file = write_scratch("bad.tvd", bytes).string();
        const Outcome r = talven("--replay '" + file + "' --verify");
        EXPECT_EQ(1, r.exit_code) << c.name;
        EXPECT_EQ("TALVEN: demo " + file + ": " + c.says + "\n", r.output) << c.name;
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
        const std::string file = write_scratch("frame.tvd", bytes).string();
        EXPECT_EQ("TALVEN: demo " + file + ": demo is corrupted (" + says + ")\n", talven("--replay '" + file + "' --verify").output);
    }

    // A save inside the demo that the save loader refuses (a wrong save version).
    Bytes death = read_all(demo("death_and_respawn.tvd"));
    death[DEMO_HEADER_SIZE + 4] ^= 1;
    reseal_header(&death, 82180);
    const std::string bad_save = write_scratch("bad_save.tvd", death).string();
    EXPECT_EQ("TALVEN: demo " + bad_save + ": its save file is refused by the save loader\n",
              talven("--replay '" + bad_save + "'").output);

    // Not a file one can read whole: missing, a folder, a FIFO, a 2 GB file.
    fs::create_directories(SCRATCH / "folder.tvd");
    ::mkfifo((SCRATCH / "fifo.tvd").c_str(), 0600);
    fs::resize_file(write_scratch("huge.tvd", menus), 2ull << 30);
    fs::resize_file(write_scratch("over.tvd", menus), DEMO_MAX_FILE + 1);
    const std::pair<const char*, const char*> files[] = {
        {"missing.tvd", "No such file or directory"}, {"folder.tvd", "not a regular file"},
        {"fifo.tvd", "not a regular file"}, {"huge.tvd", "too large"}, {"over.tvd", "too large"},
    };
    for (const auto& [name, says] : files) {
        const std::string file = (SCRATCH / name).string();
        EXPECT_EQ("TALVEN: demo " + file + ": " + says + "\n", talven("--replay '" + file + "'").output) << name;
    }

    // A recording cut off by a crash still plays, up to its last whole chunk.
    Bytes cut = menus;
    cut.resize(cut.size() - 3);
    const std::string cut_file = write_scratch("cut.tvd", cut).string();
    const Outcome played = talven("--replay '" + cut_file + "' --max-frames 5");
    EXPECT_EQ(0, played.exit_code);
    EXPECT_EQ(0u, played.output.rfind("TALVEN: demo " + cut_file + ": cut off after frame ", 0)) << played.output;
    fs::remove_all(SCRATCH);
}
