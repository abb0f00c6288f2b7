// SPDX-License-Identifier: MIT
// Fuzz target: runs the whole program with any bytes as an object, a settings file and a user's actions.
#include "harness.h"
#include "program_input.h"

#include "main_68k/start_up.h"
#include "raster/texture_map.h"
#include "settings/environment_map.h"
#include "settings/settings_file.h"

#include <string>

namespace {

constexpr char object_name[] = "object.lwo";

/// Any texture would do; this one is a slope.
std::string texture() {
    std::string bytes(envmap_bytes, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i + i / 256);
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::silence_output();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const std::string whole_texture = texture();
    const fuzz::ProgramInput input = fuzz::unpack(std::string(data, data + size));
    fuzz::files = {
        {object_name, input.object}, {default_envmap_filename, whole_texture}, {"short", "a short texture"}};
    if (!input.settings.empty()) {
        fuzz::files[session_settings] = input.settings;
    }
    offscreen::Setup setup = fuzz::setup_for(input.steps);
    setup.command_line = {object_name};
    const fuzz::Ending ending = fuzz::run(std::move(setup), [] { start_up(2); });
    fuzz::require(ending.exit_code == 0 || ending.exit_code == 20, "the program ends with 0 or 20");
    fuzz::require(offscreen::held().empty(), "a program that has ended holds nothing of its host");
    return 0;
}
