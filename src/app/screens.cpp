// Placeholder until this subsystem lands; replaced by its real implementation.
#include "app/screens.h"
void window_to_view(int, int, int px, int py, int* vx, int* vy) { *vx = px; *vy = py; }
void screens_handle_event(Game* game, SDL_Window*, FrameInput*, const SDL_Event* event) { if (event->type == SDL_QUIT) game->running = 0; }
void screens_sample_input(Game*, SDL_Window*, FrameInput*) {}
void on_enter(Game*) {}
