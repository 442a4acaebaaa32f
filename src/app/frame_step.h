// One frame of the game short of drawing it: this frame's events and held keys,
// the frame time, the frame step, the autosave it asks for and the countdown of
// notices on the menus. The main loop runs it every frame, in this order.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "core/frame_input.h"
#include "core/game.h"
#include "render/canvas.h"

struct DemoRecorder;  // when recording, sees each handled event and each frame

struct FrameTimer {
    std::uint64_t previous;  // performance counter at the last frame
    bool fixed_step;         // 1/60 s steps instead of measured time
};

// Clears the one-frame flags, handles every pending event, samples keys and pointer.
// The canvas, when there is one, sees each event too, to remake itself after a
// reset; a recorder, when recording, sees each event as the screens get it.
void frame_read_input(Game* game, SDL_Window* window, FrameInput* input, ViewCanvas* canvas = nullptr,
                      DemoRecorder* recorder = nullptr);

// Everything a frame changes once its input and time are known: the simulation,
// then the autosave when it is due, then menu notices. Recorded frames replay here.
void frame_advance(Game* game, const FrameInput* input, float dt);

// frame_read_input, the time since the last frame, then frame_advance.
void frame_step(Game* game, SDL_Window* window, FrameInput* input, FrameTimer* timer, ViewCanvas* canvas = nullptr,
                DemoRecorder* recorder = nullptr);
