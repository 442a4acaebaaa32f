// Placeholder until this subsystem lands; replaced by its real implementation.
#include "render/screenshot.h"
int render_screenshot(SDL_Renderer*, const char*) { return 0; }
