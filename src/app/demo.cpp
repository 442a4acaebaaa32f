#include "app/demo.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/demo_format.h"
#include "app/screens.h"
#include "core/game_digest.h"
#include "save/save_file.h"
#include "save/save_path.h"
#include "world/new_game.h"

using Bytes = std::vector<std::uint8_t>;

namespace {

constexpr std::uint64_t FLUSH_MS = 1000;                 // a crash loses at most this much
constexpr std::size_t FLUSH_BYTES = 256u << 10;
constexpr std::uint64_t MAX_PACE_MS = 250;               // a long recorded stall replays shorter

// Reads a whole regular file of at most `limit` bytes; folders, FIFOs and devices
// are refused without blocking. Returns null, or why not.
const char* read_regular_file(const char* path, std::size_t limit, Bytes* out) {
    const int fd = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return std::strerror(errno);
    struct stat st {};
    const char* why = nullptr;
    if (::fstat(fd, &st) != 0) why = std::strerror(errno);
    else if (!S_ISREG(st.st_mode)) why = "not a regular file";
    else if (static_cast<std::uint64_t>(st.st_size) > limit) why = "too large";
    if (why == nullptr) {
        out->resize(static_cast<std::size_t>(st.st_size));
        std::size_t done = 0;
        while (done < out->size()) {
            const ssize_t n = ::read(fd, out->data() + done, out->size() - done);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                why = n < 0 ? std::strerror(errno) : "changed while being read";
                break;
            }
            done += static_cast<std::size_t>(n);
        }
    }
    ::close(fd);
    return why;
}

// The closing digest sees `running` as the last frame left it: a frame limit
// clears it afterwards, which a replay does not see.
std::uint32_t end_digest(const Game* game, std::uint8_t running) {
    const auto copy = std::make_unique<Game>(*game);
    copy->running = running;
    return game_digest(copy.get());
}

void say(const char* path, const char* what) { std::fprintf(stderr, "TALVEN: demo %s: %s\n", path, what); }

}  // namespace

// ---- recording ----

struct DemoRecorder {
    const char* path;
    std::FILE* file;
    bool started;         // the header is on disk
    bool failed;          // a write failed; recording stopped
    DemoWriter writer;
    Bytes out;
    std::uint32_t event_count;
    bool too_many_events;
    std::uint8_t last_running;  // as the last recorded frame left it
    std::uint64_t last_flush_ms;
    DemoEvent events[DEMO_MAX_EVENTS];
};

namespace {

bool same_file(const struct stat& a, const char* path) {
    struct stat b {};
    return ::stat(path, &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Opens the demo file for writing: a regular file that is not the save itself.
DemoRecorder* record_open(const char* path) {
    const int fd = ::open(path, O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0644);
    if (fd < 0) {
        std::fprintf(stderr, "TALVEN: cannot record to %s: %s\n", path, std::strerror(errno));
        return nullptr;
    }
    struct stat st {};
    const char* why = nullptr;
    if (::fstat(fd, &st) != 0) why = std::strerror(errno);
    else if (!S_ISREG(st.st_mode)) why = "not a regular file";
    else if (same_file(st, game_default_save_path())) why = "that is the save file";
    else if (::ftruncate(fd, 0) != 0) why = std::strerror(errno);
    std::FILE* file = why == nullptr ? ::fdopen(fd, "wb") : nullptr;
    if (file == nullptr) {
        std::fprintf(stderr, "TALVEN: cannot record to %s: %s\n", path, why != nullptr ? why : std::strerror(errno));
        ::close(fd);
        return nullptr;
    }
    auto* r = new DemoRecorder{};
    r->path = path;
    r->file = file;
    r->out.reserve(FLUSH_BYTES + 4096);
    r->writer.payload.reserve(FLUSH_BYTES + 4096);
    return r;
}

// Writes what is sealed so far and hands it to the system, so a crash keeps it.
void record_flush(DemoRecorder* r) {
    if (r->failed || r->out.empty()) return;
    const bool ok = std::fwrite(r->out.data(), 1, r->out.size(), r->file) == r->out.size() && std::fflush(r->file) == 0;
    r->out.clear();
    if (ok) return;
    std::fprintf(stderr, "TALVEN: recording to %s stopped: %s\n", r->path, std::strerror(errno));
    r->failed = true;
}

// The save file as the run finds it, kept only when it loads: one that does
// not load plays exactly like no save at all.
bool read_start_save(Bytes* save) {
    const char* path = game_default_save_path();
    if (read_regular_file(path, SAVE_FILE_SIZE, save) != nullptr) return false;
    const auto scratch = std::make_unique<Game>();
    return game_load(scratch.get(), path);
}

bool record_start(DemoRecorder* r, const Game* game) {
    Bytes save;
    const bool has_save = read_start_save(&save);
    const DemoStart start{game->world_open != 0, game->autosave_off != 0, has_save, has_save ? save.data() : nullptr};
    demo_write_header(&r->out, start);
    record_flush(r);
    r->started = !r->failed;
    r->last_running = game->running;
    r->last_flush_ms = SDL_GetTicks64();
    return r->started;
}

bool record_close(DemoRecorder* r, const Game* game) {
    if (r->started && game != nullptr) {
        demo_seal_chunk(&r->writer, &r->out);
        demo_write_end(r->writer, end_digest(game, r->last_running), &r->out);
        record_flush(r);
    }
    if (std::fclose(r->file) != 0 && !r->failed) {
        std::fprintf(stderr, "TALVEN: recording to %s stopped: %s\n", r->path, std::strerror(errno));
        r->failed = true;
    }
    // A run that never started leaves no demo behind.
    if (!r->started) std::remove(r->path);
    const bool ok = r->started && !r->failed;
    delete r;
    return ok;
}

}  // namespace

void demo_record_event(DemoRecorder* r, const SDL_Event* event) {
    DemoEvent e{};
    switch (event->type) {
        case SDL_QUIT: e.type = DEMO_QUIT; break;
        case SDL_KEYDOWN:
            e.type = DEMO_KEY;
            e.a = event->key.keysym.sym;
            e.flag = event->key.repeat != 0 ? 1 : 0;
            break;
        case SDL_TEXTINPUT:
            e.type = DEMO_TEXT;
            e.flag = static_cast<std::uint8_t>(strnlen(event->text.text, sizeof event->text.text));
            std::memcpy(e.text, event->text.text, e.flag);
            break;
        case SDL_MOUSEBUTTONDOWN:
            e.type = DEMO_BUTTON;
            e.flag = event->button.button;
            e.a = event->button.x;
            e.b = event->button.y;
            break;
        case SDL_MOUSEWHEEL:
            e.type = DEMO_WHEEL;
            e.a = event->wheel.y;
            break;
        default: return;  // the screens ignore it
    }
    if (r->event_count == DEMO_MAX_EVENTS) {
        r->too_many_events = true;
        return;
    }
    r->events[r->event_count++] = e;
}

void demo_record_frame(DemoRecorder* r, const FrameInput* input, float dt, const Game* game) {
    if (r->failed) return;
    if (r->too_many_events) {
        std::fprintf(stderr, "TALVEN: recording to %s stopped: too many events in one frame\n", r->path);
        r->failed = true;
        return;
    }
    const bool digest_due = (r->writer.frames + 1) % DEMO_DIGEST_EVERY == 0;
    demo_write_frame(&r->writer, r->events, r->event_count, *input, dt, digest_due ? game_digest(game) : 0);
    r->event_count = 0;
    r->last_running = game->running;
    const std::uint64_t now = SDL_GetTicks64();
    if (now - r->last_flush_ms >= FLUSH_MS || r->writer.payload.size() >= FLUSH_BYTES) {
        demo_seal_chunk(&r->writer, &r->out);
        record_flush(r);
        r->last_flush_ms = now;
    }
}

// ---- replaying ----

struct DemoPlayer {
    Bytes bytes;
    DemoStart start;
    DemoReader reader;
    bool cut_off;                 // the recording never closed
    std::uint32_t frames;         // whole frames it holds
    std::uint32_t played;
    std::uint32_t diverged_at;    // 0 while every digest matched
    bool stop_at_divergence;
    bool window_closed;
    bool paced;                   // a player watching: keep the recorded pace
    std::uint64_t last_counter;
    std::string scratch;
    DemoFrame frame;
};

namespace {

void report_divergence(DemoPlayer* p, std::uint32_t frame) {
    if (p->diverged_at != 0) return;
    p->diverged_at = frame;
    std::fprintf(stderr, "demo diverges at frame %u\n", static_cast<unsigned>(frame));
}

// Every byte checked before the first frame plays: a damaged demo never half-plays.
const char* check_whole(DemoPlayer* p) {
    if (const char* why = demo_open(&p->reader, p->bytes.data(), p->bytes.size(), &p->start)) return why;
    for (;;) {
        switch (demo_next(&p->reader, &p->frame)) {
            case DemoStep::Frame: continue;
            case DemoStep::End: break;
            case DemoStep::CutOff: p->cut_off = true; break;
            case DemoStep::Bad: return p->reader.error;
        }
        break;
    }
    p->frames = p->reader.frames;
    demo_open(&p->reader, p->bytes.data(), p->bytes.size(), &p->start);
    return nullptr;
}

// Saving and loading during the replay go to a fresh folder holding the
// demo's save, never the player's own.
const char* seed_scratch_folder(DemoPlayer* p) {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp != nullptr && tmp[0] != '\0' ? tmp : "/tmp") + "/talven-replay-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) return "cannot make a scratch save folder";
    p->scratch = pattern;
    ::setenv("XDG_DATA_HOME", pattern.c_str(), 1);
    const char* save = game_default_save_path();
    if (std::strncmp(save, pattern.c_str(), pattern.size()) != 0) return "cannot make a scratch save folder";
    if (!p->start.has_save) return nullptr;
    std::FILE* f = std::fopen(save, "wb");
    const bool written = f != nullptr && std::fwrite(p->start.save, 1, SAVE_FILE_SIZE, f) == SAVE_FILE_SIZE;
    if (f != nullptr && std::fclose(f) != 0) return "cannot write its save file to a scratch folder";
    if (!written) return "cannot write its save file to a scratch folder";
    const auto scratch = std::make_unique<Game>();
    if (!game_load(scratch.get(), save)) return "its save file is refused by the save loader";
    return nullptr;
}

void remove_scratch(DemoPlayer* p) {
    if (p->scratch.empty()) return;
    std::error_code ignored;
    std::filesystem::remove_all(p->scratch, ignored);
}

DemoPlayer* play_open(const char* path, bool verify) {
    auto p = std::make_unique<DemoPlayer>();
    p->stop_at_divergence = verify;
    const char* why = read_regular_file(path, DEMO_MAX_FILE, &p->bytes);
    if (why == nullptr) why = check_whole(p.get());
    if (why == nullptr && p->cut_off && verify) why = "cut off (the recording never closed); replay it without --verify";
    if (why == nullptr) why = seed_scratch_folder(p.get());
    if (why != nullptr) {
        say(path, why);
        remove_scratch(p.get());
        return nullptr;
    }
    if (p->cut_off) {
        std::fprintf(stderr, "TALVEN: demo %s: cut off after frame %u; replaying what it holds\n", path,
                     static_cast<unsigned>(p->frames));
    }
    return p.release();
}

void play_start(DemoPlayer* p, Game* game) { game->autosave_off = p->start.autosave_off ? 1 : 0; }

SDL_Event to_sdl(const DemoEvent& e) {
    SDL_Event ev{};
    switch (e.type) {
        case DEMO_QUIT: ev.type = SDL_QUIT; break;
        case DEMO_KEY:
            ev.type = SDL_KEYDOWN;
            ev.key.keysym.sym = e.a;
            ev.key.repeat = e.flag;
            break;
        case DEMO_TEXT:
            ev.type = SDL_TEXTINPUT;
            std::memcpy(ev.text.text, e.text, e.flag);
            break;
        case DEMO_BUTTON:
            ev.type = SDL_MOUSEBUTTONDOWN;
            ev.button.button = e.flag;
            ev.button.x = e.a;
            ev.button.y = e.b;
            break;
        default:
            ev.type = SDL_MOUSEWHEEL;
            ev.wheel.y = e.a;
            break;
    }
    return ev;
}

// Waits out the rest of the recorded frame time.
void pace(DemoPlayer* p, float dt) {
    const std::uint64_t freq = SDL_GetPerformanceFrequency();
    const std::uint64_t now = SDL_GetPerformanceCounter();
    const double want = static_cast<double>(dt) - static_cast<double>(now - p->last_counter) / static_cast<double>(freq);
    if (want > 0.0) SDL_Delay(static_cast<Uint32>(std::min(want * 1000.0, static_cast<double>(MAX_PACE_MS))));
    p->last_counter = SDL_GetPerformanceCounter();
}

bool play_frame(DemoPlayer* p, Game* game, SDL_Window* window, FrameInput* input, ViewCanvas* canvas) {
    if (window != nullptr) {
        // The window stays alive; closing it ends the replay.
        SDL_Event ev;
        while (SDL_PollEvent(&ev)) {
            if (canvas != nullptr) canvas_handle_event(canvas, &ev);
            p->window_closed = p->window_closed || ev.type == SDL_QUIT;
        }
    }
    if (p->window_closed || p->played == p->frames) return false;
    if (p->diverged_at != 0 && p->stop_at_divergence) return false;
    demo_next(&p->reader, &p->frame);  // checked whole before the first frame
    const DemoFrame& f = p->frame;
    frame_input_begin(input);
    for (std::uint32_t i = 0; i < f.event_count; ++i) {
        const SDL_Event ev = to_sdl(f.events[i]);
        screens_handle_event(game, window, input, &ev);
    }
    *input = f.input;
    frame_advance(game, input, f.dt);
    p->played = f.number;
    if (f.has_digest && game_digest(game) != f.digest) report_divergence(p, f.number);
    if (p->paced) pace(p, f.dt);
    return true;
}

// The closing record: the run stopped where the recording did, in the same state.
bool play_close(DemoPlayer* p, const Game* game, bool limited) {
    if (game != nullptr && p->diverged_at == 0 && !p->cut_off && !p->window_closed && !limited) {
        if (p->played < p->frames) report_divergence(p, p->played + 1);
        else if (demo_next(&p->reader, &p->frame) != DemoStep::End || p->reader.end_digest != game_digest(game))
            report_divergence(p, p->played);
    }
    const bool ok = p->diverged_at == 0;
    remove_scratch(p);
    delete p;
    return ok;
}

}  // namespace

bool demo_session_open(DemoSession* demo, RunOptions* opts) {
    *demo = DemoSession{};
    if (opts->replay != nullptr) {
        demo->player = play_open(opts->replay, false);
        if (demo->player == nullptr) return false;
        opts->debug_game = demo->player->start.debug_game;
        demo->player->paced = opts->max_frames < 1 && opts->screenshot == nullptr;
        return true;
    }
    if (opts->record == nullptr) return true;
    demo->recorder = record_open(opts->record);
    return demo->recorder != nullptr;
}

bool demo_session_start(DemoSession* demo, Game* game) {
    if (demo->player != nullptr) play_start(demo->player, game);
    if (demo->recorder != nullptr && !record_start(demo->recorder, game)) return false;
    return true;
}

bool demo_session_step(DemoSession* demo, Game* game, SDL_Window* window, FrameInput* input, FrameTimer* timer,
                       ViewCanvas* canvas) {
    if (demo->player == nullptr) {
        frame_step(game, window, input, timer, canvas, demo->recorder);
        return true;
    }
    if (demo->player->played == 0) demo->player->last_counter = SDL_GetPerformanceCounter();
    return play_frame(demo->player, game, window, input, canvas);
}

bool demo_session_close(DemoSession* demo, const Game* game, const RunOptions& opts) {
    bool ok = true;
    if (demo->recorder != nullptr) ok = record_close(demo->recorder, game);
    if (demo->player != nullptr) {
        const bool limited = opts.max_frames >= 1 && demo->player->played >= static_cast<std::uint32_t>(opts.max_frames);
        ok = play_close(demo->player, game, limited);
    }
    *demo = DemoSession{};
    return ok;
}

int demo_verify(const char* path) {
    DemoPlayer* p = play_open(path, true);
    if (p == nullptr) return 1;
    const auto owned = std::make_unique<Game>();
    Game* game = owned.get();
    game->running = 1;
    form_start_values(game);
    if (p->start.debug_game) game_new(game, FORM_START_SEED, "QA WORLD");
    play_start(p, game);
    FrameInput input{};
    while (game->running && play_frame(p, game, nullptr, &input, nullptr)) {
    }
    const std::uint32_t frames = p->played;
    if (!play_close(p, game, false)) return 1;
    std::printf("demo %s: %u frames, every digest matches\n", path, static_cast<unsigned>(frames));
    return 0;
}
