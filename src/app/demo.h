// Demos of whole runs: recording what a run's frames read (its starting save,
// the events the screens handled, the sampled input, the frame times) as it is
// played, and playing a demo back in a window or headless to check its digests.
// A replay saves only into a scratch folder seeded from the demo.
#pragma once

#include <SDL.h>

#include "app/frame_step.h"
#include "app/options.h"
#include "core/frame_input.h"
#include "core/game.h"

struct DemoRecorder;
struct DemoPlayer;

// A run records, replays, or (both null) neither.
struct DemoSession {
    DemoRecorder* recorder;
    DemoPlayer* player;
};

// Before anything starts: opens the recording, or loads, checks and sets up the
// demo to replay (which decides the debug world). Prints one line and returns
// false when it cannot.
bool demo_session_open(DemoSession* demo, RunOptions* opts);

// Once the game has its starting state: a recording writes its header, a replay
// sets what the recorded start had. False (message printed) when the header fails.
bool demo_session_start(DemoSession* demo, Game* game);

// One frame: the normal frame step (recorded when recording) or the demo's next
// frame. False when a replay has no frame left.
// The canvas sees the window's events in either case.
bool demo_session_step(DemoSession* demo, Game* game, SDL_Window* window, FrameInput* input, FrameTimer* timer,
                       ViewCanvas* canvas);

// Seals a recording or finishes a replay (checking the closing digest unless the
// frame limit cut it short); `game` is null when the run never started. False when
// a recording could not be written whole or a replay diverged.
bool demo_session_close(DemoSession* demo, const Game* game, const RunOptions& opts);

// `--replay FILE --verify`: the whole demo headless, as fast as it goes; the exit code.
int demo_verify(const char* path);

// Hooks for the frame step while recording.
void demo_record_event(DemoRecorder* recorder, const SDL_Event* event);
void demo_record_frame(DemoRecorder* recorder, const FrameInput* input, float dt, const Game* game);
