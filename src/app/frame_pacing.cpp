#include "app/frame_pacing.h"

#include "app/frame_clock.h"

std::uint32_t pacing_delay_ms(bool unattended, bool vsync_claimed, int refresh_hz, float frame_seconds) {
    if (unattended) return 0;
    const float period = 1.0f / static_cast<float>(refresh_hz > 0 ? refresh_hz : FALLBACK_REFRESH_HZ);
    if (vsync_claimed && frame_seconds >= period * 0.5f) return 0;
    if (!(frame_seconds < period)) return 0;
    // Rounded down: waking a little early costs a spin of the loop, waking late a missed frame.
    return static_cast<std::uint32_t>((period - frame_seconds) * 1000.0f);
}

FramePacer frame_pacer_create(SDL_Renderer* renderer, bool unattended) {
    SDL_RendererInfo info{};
    const bool vsync = SDL_GetRendererInfo(renderer, &info) == 0 && (info.flags & SDL_RENDERER_PRESENTVSYNC) != 0;
    return {unattended, vsync};
}

int display_refresh_hz(SDL_Window* window) {
    SDL_DisplayMode mode{};
    return SDL_GetCurrentDisplayMode(SDL_GetWindowDisplayIndex(window), &mode) == 0 ? mode.refresh_rate : 0;
}

// Asked every frame: the window may have moved to a display with another rate.
void frame_pacer_wait(const FramePacer& pacer, SDL_Window* window, std::uint64_t frame_start) {
    if (pacer.unattended) return;
    const int hz = display_refresh_hz(window);
    const float took = elapsed_seconds(frame_start, SDL_GetPerformanceCounter(), SDL_GetPerformanceFrequency());
    const std::uint32_t ms = pacing_delay_ms(pacer.unattended, pacer.vsync_claimed, hz, took);
    if (ms > 0) SDL_Delay(ms);
}
