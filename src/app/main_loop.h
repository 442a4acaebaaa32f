// The application shell: options, SDL start-up, the frame loop (frame step, draw,
// screenshot, present), the save at exit and the exit code.
#pragma once

int app_main(int argc, char** argv);
