#include "app/main_loop.h"

int main(int argc, char** argv) { return app_main(argc, argv); }
