// Placeholder until this subsystem lands; replaced by its real implementation.
#include "render/view.h"
void render_game(SDL_Renderer*, const Game*, const FrameInput*) {}
