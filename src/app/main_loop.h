// The application shell: options, SDL start-up, the frame loop (events, sample,
// update, draw, screenshot, present), the save at exit and the exit code.
#pragma once

int app_main(int argc, char** argv);
