#include "app/frame_step.h"

#include "app/demo.h"
#include "app/frame_clock.h"
#include "app/screens.h"
#include "save/save_file.h"
#include "save/save_path.h"
#include "sim/autosave.h"
#include "sim/update.h"

void frame_read_input(Game* game, SDL_Window* window, FrameInput* input, ViewCanvas* canvas,
                      DemoRecorder* recorder) {
    frame_input_begin(input);
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (canvas != nullptr) canvas_handle_event(canvas, &event);
        if (recorder != nullptr) demo_record_event(recorder, &event);
        screens_handle_event(game, window, input, &event);
    }
    screens_sample_input(window, input);
}

void frame_advance(Game* game, const FrameInput* input, float dt) {
    game_update(game, input, dt);
    if (autosave_due(game)) autosave_finish(game, game_save(game, game_default_save_path()));
    // Menus have no simulation step; their notices still time out.
    if (game->screen != SCREEN_PLAYING && game->notice_timer > 0.0f) game->notice_timer -= dt;
}

void frame_step(Game* game, SDL_Window* window, FrameInput* input, FrameTimer* timer, ViewCanvas* canvas,
                DemoRecorder* recorder) {
    frame_read_input(game, window, input, canvas, recorder);
    const Uint64 now = SDL_GetPerformanceCounter();
    float dt = elapsed_seconds(timer->previous, now, SDL_GetPerformanceFrequency());
    timer->previous = now;
    if (timer->fixed_step) dt = FIXED_STEP;
    frame_advance(game, input, dt);
    if (recorder != nullptr) demo_record_frame(recorder, input, dt, game);
}
