// Frame pacing: where the display does not hold each present until its next
// refresh, the loop sleeps out the rest of the frame instead of spinning a core.
// Owns the decision and the sleep; the frame time for the simulation is untouched.
#pragma once

#include <SDL.h>

#include <cstdint>

constexpr int FALLBACK_REFRESH_HZ = 60;

// Whole milliseconds to sleep after a frame that took `frame_seconds` from its
// start to the end of its present. Unattended runs never wait. A display that
// claims to wait for its refresh is trusted unless the frame came back in under
// half a refresh, which a present that really waited cannot do.
std::uint32_t pacing_delay_ms(bool unattended, bool vsync_claimed, int refresh_hz, float frame_seconds);

struct FramePacer {
    bool unattended;
    bool vsync_claimed;
};

FramePacer frame_pacer_create(SDL_Renderer* renderer, bool unattended);
// The refresh rate of the window's display, 0 when unknown.
int display_refresh_hz(SDL_Window* window);
// Sleeps what is left of the frame that began at performance-counter reading `frame_start`.
void frame_pacer_wait(const FramePacer& pacer, SDL_Window* window, std::uint64_t frame_start);
