// SPDX-License-Identifier: MIT
// Starts SDL with the settings that this viewer needs.
#include "platform/sdl/display_connection.h"

#include "platform/sdl/pointer.h"
#include "platform/sdl/sdl_window.h"
#include "platform/sdl/surroundings.h"
#include "platform/sdl/x11_keyboard.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#if defined(SDL_VIDEO_DRIVER_WAYLAND)
#include <wayland-client-core.h>
#endif

namespace host {

namespace {

/// Sets a variable of the process's environment as long as this object exists.
class TemporaryVariable {
public:
    TemporaryVariable(const char *variable, const char *value) : name(variable) {
        if (const char *old = std::getenv(variable)) {
            previous = old;
        }
        setenv(variable, value, 1);
    }
    ~TemporaryVariable() { previous ? setenv(name, previous->c_str(), 1) : unsetenv(name); }
    TemporaryVariable(const TemporaryVariable &) = delete;
    TemporaryVariable &operator=(const TemporaryVariable &) = delete;

private:
    const char *name;
    std::optional<std::string> previous;
};

} // namespace

bool connect_display() {
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0) {
        return true;
    }
    // This host handles signals itself. The screen saver may start while the viewer runs unattended. The
    // viewer's window is no reason to switch the desktop's composition off.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    // SDL must not turn a tap into a click, because a click ends the viewer.
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    // The software renderer is used where OpenGL fails, so its pictures must not go through OpenGL.
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_SetHint(SDL_HINT_APP_NAME, "Zelvo");
    SDL_SetHint("SDL_VIDEO_X11_WMCLASS", "zelvo");
    SDL_SetHint("SDL_VIDEO_WAYLAND_WMCLASS", "zelvo");
    // Commands are single keys, and an input method that collects keys into words would hold them back.
    // Requesters keep their input method, because names are words.
    const TemporaryVariable no_input_method("XMODIFIERS", "@im=none");
    prepare_for_opengl();
    SDL_SetMainReady();
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        return complain("no display");
    }
    // A driver that shows nothing is used only if the user asks for it.
    const bool shows_nothing = std::string(SDL_GetCurrentVideoDriver()) == "offscreen";
    if (shows_nothing && SDL_GetHint(SDL_HINT_VIDEODRIVER) == nullptr) {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        SDL_Quit();
        SDL_SetError("neither X11 nor Wayland answers");
        return complain("no display");
    }
    watch_x11_keyboard();
    watch_focus();
    return true;
}

bool is_display_lost() {
#if defined(SDL_VIDEO_DRIVER_WAYLAND)
    SDL_SysWMinfo info{};
    SDL_VERSION(&info.version);
    return picture_window() != nullptr && SDL_GetWindowWMInfo(picture_window(), &info) == SDL_TRUE &&
           info.subsystem == SDL_SYSWM_WAYLAND && wl_display_get_error(info.info.wl.display) != 0;
#else
    return false;
#endif
}

bool complain(const char *what) {
    std::fprintf(stderr, "zelvo: %s: %s\n", what, SDL_GetError());
    return false;
}

} // namespace host
