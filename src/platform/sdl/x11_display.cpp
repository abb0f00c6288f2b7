// SPDX-License-Identifier: MIT
// Asks the X server directly, over SDL's connection.
#include "platform/sdl/x11_display.h"

#include <SDL_syswm.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <optional>

namespace host {

namespace {

/// A window on an X display.
struct XWindow {
    Display *display;
    ::Window id;
};

/// Number of requests refused since the trap was made. Written by the trap's handler.
int caught_errors = 0;

/// The error handler from before the trap. Written when a trap is made.
XErrorHandler previous_handler = nullptr;

int count_error(Display *, XErrorEvent *) {
    ++caught_errors;
    return 0;
}

/// Nothing if the window is not on an X display.
std::optional<XWindow> x_window(SDL_Window *window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    const bool is_x11 = window != nullptr && SDL_GetWindowWMInfo(window, &info) == SDL_TRUE &&
                        info.subsystem == SDL_SYSWM_X11;
    return is_x11 ? std::optional(XWindow{info.info.x11.display, info.info.x11.window}) : std::nullopt;
}

bool is_button_down(const XWindow &window) {
    ::Window root = 0;
    ::Window child = 0;
    int root_x = 0;
    int root_y = 0;
    int x = 0;
    int y = 0;
    unsigned int mask = 0;
    XQueryPointer(window.display, window.id, &root, &child, &root_x, &root_y, &x, &y, &mask);
    return (mask & (Button1Mask | Button2Mask | Button3Mask | Button4Mask | Button5Mask)) != 0;
}

bool can_be_grabbed(const XWindow &window) {
    const int result = XGrabPointer(window.display, window.id, True, ButtonPressMask, GrabModeAsync,
                                    GrabModeAsync, None, None, CurrentTime);
    if (result == GrabSuccess) {
        XUngrabPointer(window.display, CurrentTime);
    }
    return result == GrabSuccess;
}

} // namespace

X11ErrorTrap::X11ErrorTrap() {
    caught_errors = 0;
    previous_handler = XSetErrorHandler(count_error);
}

X11ErrorTrap::~X11ErrorTrap() {
    XSetErrorHandler(previous_handler);
}

bool X11ErrorTrap::has_caught_error() {
    return caught_errors > 0;
}

bool is_x11_pointer_free(SDL_Window *window) {
    const std::optional<XWindow> x11 = x_window(window);
    return !x11 || (!is_button_down(*x11) && can_be_grabbed(*x11));
}

bool is_x11_full_screen(SDL_Window *window) {
    const std::optional<XWindow> x11 = x_window(window);
    if (!x11) {
        return false;
    }
    const Atom state = XInternAtom(x11->display, "_NET_WM_STATE", False);
    const Atom full_screen = XInternAtom(x11->display, "_NET_WM_STATE_FULLSCREEN", False);
    constexpr long most_states = 64;
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long bytes_left = 0;
    unsigned char *value = nullptr;
    bool is_listed = false;
    if (XGetWindowProperty(x11->display, x11->id, state, 0, most_states, False, XA_ATOM, &type, &format,
                           &count, &bytes_left, &value) == Success &&
        value != nullptr) {
        const auto *states = reinterpret_cast<const Atom *>(value);
        for (unsigned long i = 0; type == XA_ATOM && i < count; ++i) {
            is_listed = is_listed || states[i] == full_screen;
        }
        XFree(value);
    }
    return is_listed;
}

void leave_x11_full_screen(SDL_Window *window) {
    const std::optional<XWindow> x11 = x_window(window);
    if (!x11) {
        return;
    }
    constexpr long remove = 0;
    constexpr long from_application = 1;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = x11->id;
    event.xclient.message_type = XInternAtom(x11->display, "_NET_WM_STATE", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = remove;
    event.xclient.data.l[1] = static_cast<long>(XInternAtom(x11->display, "_NET_WM_STATE_FULLSCREEN", False));
    event.xclient.data.l[3] = from_application;
    XSendEvent(x11->display, DefaultRootWindow(x11->display), False,
               SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XFlush(x11->display);
}

} // namespace host
