#include "app/main_loop.h"

#include <SDL.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>

#include "app/demo.h"
#include "app/frame_pacing.h"
#include "app/frame_step.h"
#include "app/options.h"
#include "app/screens.h"
#include "app/screenshot.h"
#include "app/selftest.h"
#include "core/frame_input.h"
#include "core/game.h"
#include "render/canvas.h"
#include "render/view.h"
#include "save/save_file.h"
#include "save/save_path.h"
#include "world/new_game.h"

namespace {

const char* sdl_env(const char* name) { return SDL_getenv(name); }

// Set when the terminal the game runs in goes away (SIGHUP). The frame loop
// turns it into the quit request SDL makes of SIGTERM, so the world is saved.
volatile std::sig_atomic_t hang_up = 0;

void on_hang_up(int) { hang_up = 1; }

// A file-size limit then fails the write (the save reports it) instead of
// killing the game mid-save. A hang-up that was already ignored (nohup) stays so.
void install_signal_handlers() {
    std::signal(SIGXFSZ, SIG_IGN);
    struct sigaction old {};
    if (sigaction(SIGHUP, nullptr, &old) != 0 || old.sa_handler == SIG_IGN) return;
    struct sigaction act {};
    act.sa_handler = on_hang_up;
    sigaction(SIGHUP, &act, nullptr);
}

// Once asked, the loop ends that frame, so the flag never needs clearing.
void pass_on_hang_up() {
    if (hang_up == 0) return;
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    SDL_PushEvent(&quit);
}

// Said once at start, so a player who starts the game from another folder
// knows where the world went.
void report_save_fallback() {
    if (game_save_folder() != SaveFolder::Current) return;
    char cwd[1024];
    const bool known = ::getcwd(cwd, sizeof cwd) != nullptr;
    std::fprintf(stderr, "TALVEN: no per-user data folder, the world is saved in %s%s%s\n", known ? cwd : "",
                 known ? "/" : "", game_default_save_path());
}

// On X11 the software renderer would otherwise hand each frame to an OpenGL
// renderer to present, which without a GPU costs more than drawing the frame;
// X11's own shared-memory image is far cheaper. Other systems may have no native
// framebuffer at all, so they keep SDL's choice, and SDL_FRAMEBUFFER_ACCELERATION
// in the environment still overrides this.
void prefer_native_x11_framebuffer() {
    const char* driver = SDL_GetCurrentVideoDriver();
    if (driver != nullptr && std::strcmp(driver, "x11") == 0) SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
}

struct Video {
    SDL_Window* window;
    SDL_Renderer* renderer;
};

// Opens the window and renderer; prints the failing step and returns false.
bool open_video(const RunOptions& opts, Video* video) {
    if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO | SDL_INIT_EVENTS) != 0) {
        std::fprintf(stderr, "SDL_Init: %s\n", SDL_GetError());
        return false;
    }
    prefer_native_x11_framebuffer();
    const bool hidden = opts.screenshot != nullptr;
    const Uint32 flags = hidden ? (SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE)
                                : (SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
    video->window = SDL_CreateWindow("TALVEN", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                     hidden ? 640 : 1280, hidden ? 360 : 720, flags);
    if (video->window == nullptr) {
        std::fprintf(stderr, "window: %s\n", SDL_GetError());
        SDL_Quit();
        return false;
    }
    video->renderer = SDL_CreateRenderer(video->window, -1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    if (video->renderer == nullptr) video->renderer = SDL_CreateRenderer(video->window, -1, SDL_RENDERER_SOFTWARE);
    if (video->renderer == nullptr) {
        std::fprintf(stderr, "renderer: %s\n", SDL_GetError());
        SDL_DestroyWindow(video->window);
        SDL_Quit();
        return false;
    }
    SDL_RenderSetLogicalSize(video->renderer, VIEW_W, VIEW_H);
    SDL_SetRenderDrawBlendMode(video->renderer, SDL_BLENDMODE_BLEND);
    SDL_StartTextInput();
    return true;
}

void close_video(Video* video) {
    SDL_StopTextInput();
    SDL_DestroyRenderer(video->renderer);
    SDL_DestroyWindow(video->window);
    SDL_Quit();
}

// Title screen, no world open, with the values the create-world form starts from.
void start_on_title(Game* game) {
    std::memset(game, 0, sizeof *game);
    game->running = 1;
    form_start_values(game);
}

// Only the title shows whether there is a world to load.
bool title_save_exists(const Game* game) {
    return game->screen == SCREEN_TITLE && game_save_exists(game_default_save_path());
}

struct LoopResult {
    bool screenshot_ok;
};

LoopResult run_frames(Game* game, const RunOptions& opts, const Video& video, DemoSession* demo) {
    FrameInput input{};
    FrameTimer timer{SDL_GetPerformanceCounter(), opts.fixed_step};
    LoopResult result{opts.screenshot == nullptr};
    std::int32_t frames = 0;
    ViewCanvas canvas = canvas_create(video.renderer, SDL_GetWindowPixelFormat(video.window));
    const FramePacer pacer = frame_pacer_create(video.renderer, opts.fixed_step);

    while (game->running) {
        pass_on_hang_up();
        if (!demo_session_step(demo, game, video.window, &input, &timer, &canvas)) break;

        canvas_begin_frame(&canvas);
        render_game(video.renderer, game, &input, title_save_exists(game));
        canvas_end_frame(&canvas);
        ++frames;

        if (opts.screenshot != nullptr && frames == opts.max_frames) {
            if (render_screenshot(video.renderer, opts.screenshot)) {
                std::printf("screenshot: %s\n", opts.screenshot);
                result.screenshot_ok = true;
            } else {
                std::fprintf(stderr, "screenshot failed: %s\n", SDL_GetError());
                result.screenshot_ok = false;
            }
        }
        SDL_RenderPresent(video.renderer);

        if (opts.max_frames >= 1 && frames >= opts.max_frames) {
            game->running = 0;
            break;
        }
        frame_pacer_wait(pacer, video.window, timer.previous);
    }
    canvas_destroy(&canvas);
    return result;
}

// A world still open is saved when the player leaves; unattended runs never save.
bool save_at_exit(const Game* game, const RunOptions& opts) {
    if (!game->world_open || game->autosave_off || opts.max_frames != 0) return true;
    if (game_save(game, game_default_save_path())) return true;
    std::fprintf(stderr, "TALVEN: could not save the active world\n");
    return false;
}

}  // namespace

int app_main(int argc, char** argv) {
    install_signal_handlers();
    RunOptions opts{};
    switch (parse_options(argc, argv, sdl_env, &opts)) {
        case OptionsAction::Selftest: return game_selftest();
        case OptionsAction::Help: std::printf("%s\n", USAGE_TEXT); return 0;
        case OptionsAction::Version: std::printf("%s\n", VERSION_TEXT); return 0;
        case OptionsAction::Run: break;
    }

    if (opts.replay != nullptr && opts.verify) return demo_verify(opts.replay);
    DemoSession demo{};
    if (!demo_session_open(&demo, &opts)) return 1;

    Video video{};
    if (!open_video(opts, &video)) {
        demo_session_close(&demo, nullptr, opts);
        return 1;
    }
    report_save_fallback();

    // One record for the whole run (about 95 KB), allocated once, off the stack.
    const auto owned = std::make_unique<Game>();
    Game* game = owned.get();
    start_on_title(game);
    if (opts.debug_game) {
        game_new(game, FORM_START_SEED, "QA WORLD");
        game->autosave_off = opts.screenshot != nullptr ? 1 : 0;
    }

    if (!demo_session_start(&demo, game)) {
        demo_session_close(&demo, nullptr, opts);
        close_video(&video);
        return 1;
    }

    const LoopResult loop = run_frames(game, opts, video, &demo);
    const bool save_ok = save_at_exit(game, opts);
    const bool demo_ok = demo_session_close(&demo, game, opts);
    close_video(&video);
    return (loop.screenshot_ok && save_ok && demo_ok) ? 0 : 1;
}
