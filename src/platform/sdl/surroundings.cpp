// SPDX-License-Identifier: MIT
// Asks the session's bus and tries the user's folders.
#include "platform/sdl/surroundings.h"

#include "platform/posix/folders.h"

#include <cstdlib>
#include <gio/gio.h>
#include <set>
#include <string>
#include <unistd.h>

namespace host {

namespace {

/// The session's bus, or null. Where no address is known one would be started, which is not this viewer's
/// affair.
GDBusConnection *session_bus() {
    const char *address = g_getenv("DBUS_SESSION_BUS_ADDRESS");
    const std::string usual = std::string(g_get_user_runtime_dir()) + "/bus";
    const bool is_known = address != nullptr || access(usual.c_str(), F_OK) == 0;
    return is_known ? g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr) : nullptr;
}

/// The services that the session can start; none without a bus.
std::set<std::string> session_services() {
    std::set<std::string> services;
    GDBusConnection *bus = session_bus();
    if (bus == nullptr) {
        return services;
    }
    GVariant *answer = g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListActivatableNames",
        nullptr, G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (answer != nullptr) {
        GVariantIter *names = nullptr;
        const char *name = nullptr;
        g_variant_get(answer, "(as)", &names);
        while (g_variant_iter_next(names, "&s", &name) != 0) {
            services.insert(name);
        }
        g_variant_iter_free(names);
        g_variant_unref(answer);
    }
    g_object_unref(bus);
    return services;
}

/// Whether there is, or can be, a folder of this path that can be written.
bool can_be_written(const std::string &folder) {
    constexpr int private_mode = 0700;
    return g_mkdir_with_parents(folder.c_str(), private_mode) == 0 && access(folder.c_str(), W_OK) == 0;
}

} // namespace

void prepare_for_toolkit() {
    // Before the library reads where the folders are, which it does once.
    const char *data = g_getenv("XDG_DATA_HOME");
    const std::string data_folder =
        data != nullptr && data[0] == '/' ? data : std::string(g_get_home_dir()) + "/.local/share";
    if (!can_be_written(data_folder)) {
        const auto session = session_settings_folder();
        setenv("XDG_DATA_HOME", (session.value_or(g_get_tmp_dir()) + "/toolkit").c_str(), 1);
    }
    const std::set<std::string> services = session_services();
    const bool keeps_settings = services.contains("ca.desrt.dconf") &&
                                can_be_written(std::string(g_get_user_config_dir()) + "/dconf") &&
                                can_be_written(std::string(g_get_user_runtime_dir()) + "/dconf");
    if (!keeps_settings) {
        setenv("GSETTINGS_BACKEND", "memory", 0);
    }
    if (!services.contains("org.a11y.Bus")) {
        setenv("NO_AT_BRIDGE", "1", 0);
    }
}

void prepare_for_opengl() {
    setenv("LIBGL_DEBUG", "quiet", 0);
    setenv("EGL_LOG_LEVEL", "fatal", 0);
}

} // namespace host
