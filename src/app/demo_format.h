// Demo files in memory: the run's starting save, then per frame the events the
// screens handled, the sampled input and the frame time, in self-checked chunks,
// with a whole-game digest every 60 frames and a closing record. Encoding, and a
// reader that checks every byte; no SDL and no files here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/frame_input.h"

constexpr std::uint32_t DEMO_VERSION = 1;
constexpr std::uint32_t DEMO_DIGEST_EVERY = 60;          // frames between digests
constexpr std::size_t DEMO_HEADER_SIZE = 16;             // magic, version, flags, checksum
constexpr std::size_t DEMO_CHUNK_HEAD = 9;               // kind, payload size, checksum
constexpr std::size_t DEMO_MAX_CHUNK = 1u << 20;         // payload bytes
constexpr std::size_t DEMO_MAX_FILE = 64u << 20;         // far beyond hours of play
constexpr std::uint32_t DEMO_MAX_EVENTS = 1024;          // in one frame
constexpr std::size_t DEMO_TEXT_SIZE = 32;               // as SDL's text event

// Only the fields the screens read.
enum DemoEventType : std::uint8_t { DEMO_QUIT, DEMO_KEY, DEMO_TEXT, DEMO_BUTTON, DEMO_WHEEL, DEMO_EVENT_TYPES };

struct DemoEvent {
    std::uint8_t type;
    std::uint8_t flag;      // key: repeat (0/1); button: which button; text: byte count
    std::int32_t a;         // key: key code; button: view x; wheel: y
    std::int32_t b;         // button: view y
    char text[DEMO_TEXT_SIZE];
};

struct DemoStart {
    bool debug_game;        // started in the debug world
    bool autosave_off;
    bool has_save;          // a loadable save file was there at start
    const std::uint8_t* save;  // its SAVE_FILE_SIZE bytes when has_save
};

struct DemoFrame {
    std::uint32_t number;   // from 1
    std::uint32_t event_count;
    DemoEvent events[DEMO_MAX_EVENTS];
    FrameInput input;
    float dt;
    bool has_digest;
    std::uint32_t digest;
};

// ---- writing ----

struct DemoWriter {
    std::vector<std::uint8_t> payload;  // the chunk being filled
    FrameInput last_input;
    std::uint32_t last_dt_bits;
    std::uint32_t frames;
};

void demo_write_header(std::vector<std::uint8_t>* out, const DemoStart& start);
// Appends one frame to the open chunk; `digest` is read only on every 60th frame.
void demo_write_frame(DemoWriter* w, const DemoEvent* events, std::uint32_t count, const FrameInput& input,
                      float dt, std::uint32_t digest);
// Moves the open chunk, sealed, to `out` (nothing when it is empty).
void demo_seal_chunk(DemoWriter* w, std::vector<std::uint8_t>* out);
// The closing record: how many frames were played and the final digest.
void demo_write_end(const DemoWriter& w, std::uint32_t digest, std::vector<std::uint8_t>* out);

// ---- reading ----

enum class DemoStep { Frame, End, CutOff, Bad };

struct DemoReader {
    const std::uint8_t* data;
    std::size_t size;
    std::size_t pos;
    std::size_t chunk_end;       // end of the open chunk's payload; pos when none is open
    FrameInput last_input;
    std::uint32_t last_dt_bits;
    std::uint32_t frames;        // frames read so far
    std::uint32_t end_digest;    // once DemoStep::End
    const char* error;           // once DemoStep::Bad: why
};

// Checks the header; on success `start` describes the run's beginning and the
// reader stands on the first chunk. On failure returns the one-line reason.
const char* demo_open(DemoReader* r, const std::uint8_t* data, std::size_t size, DemoStart* start);

// The next frame, the closing record, a file cut off after whole chunks (a
// recording that crashed), or a damaged one (`error` says how).
DemoStep demo_next(DemoReader* r, DemoFrame* frame);
