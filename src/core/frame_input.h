// The per-frame input snapshot: built by the main loop from SDL events and the
// held keys, read by the simulation and the drawing. Plain data, no SDL types.
#pragma once

#include <cstdint>

struct FrameInput {
    std::uint8_t left;          // A or Left held
    std::uint8_t right;         // D or Right held
    std::uint8_t jump_held;     // Space, W or Up held
    std::uint8_t down;          // S or Down held
    std::uint8_t use_held;      // left mouse button held
    std::uint8_t jump_pressed;  // one-frame: jump key went down
    std::uint8_t use_pressed;   // one-frame: left button went down
    std::uint8_t place;         // one-frame: right button went down
    std::int32_t mouse_x;       // pointer in view pixels, may lie outside 0..639
    std::int32_t mouse_y;
};

// Clears the one-frame flags at the start of a frame.
inline void frame_input_begin(FrameInput* in) {
    in->jump_pressed = 0;
    in->use_pressed = 0;
    in->place = 0;
}
