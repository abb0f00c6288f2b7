// SPDX-License-Identifier: MIT
// zelvo-render: runs the viewer on the offscreen host and writes its pictures to files.
#include "failure.h"
#include "main_68k/start_up.h"
#include "object_runs.h"
#include "options.h"
#include "outputs.h"
#include "platform/offscreen/host.h"
#include "platform/offscreen/input_script.h"
#include "platform/posix/folders.h"
#include "platform/posix/standard_streams.h"
#include "settings/environment_map.h"
#include "temporary_folder.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

/// The outputs of the run. Finished at exit, because the program ends by exiting.
std::optional<Outputs> outputs;

/// Temporary folders of the volumes for which the user gave none; removed at the end.
std::optional<TemporaryFolder> env_folder;
std::optional<TemporaryFolder> envarc_folder;

void finish() {
    outputs->complete();
    outputs.reset();
    env_folder.reset();
    envarc_folder.reset();
}

void read_input(const std::string &path, offscreen::Setup &setup) {
    std::ifstream script(path);
    // A folder can be opened like a file, but not read.
    if (!script || std::filesystem::is_directory(path)) {
        fail("cannot read " + path);
    }
    if (const auto error = offscreen::read_script(script, setup)) {
        fail(path + ":" + std::to_string(error->line) + ": " + error->message);
    }
}

/// The user's folder, or a new temporary one.
std::string volume_folder(const std::optional<std::string> &chosen,
                          std::optional<TemporaryFolder> &temporary) {
    return chosen ? *chosen : temporary.emplace().path();
}

void run(const Options &options) {
    offscreen::Setup setup;
    setup.command_line = options.program_words;
    setup.default_mode = options.mode;
    setup.tick = options.tick;
    setup.last_pass = options.passes;
    if (options.envmap) {
        setup.stand_ins[default_envmap_filename] = *options.envmap;
    } else if (!std::filesystem::exists(default_envmap_filename)) {
        setup.stand_ins[default_envmap_filename] = host::installed_data_path(default_envmap_filename);
    }
    if (options.input) {
        read_input(*options.input, setup);
    }
    apply_view(options.view, setup);
    setup.on_frame = [](const offscreen::Picture &frame) { outputs->take_frame(frame); };
    setup.on_picture = [](const offscreen::Picture &picture) { outputs->take_picture(picture); };

    outputs.emplace(options);
    setup.volumes["ENV"] = volume_folder(options.env_folder, env_folder);
    setup.volumes["ENVARC"] = volume_folder(options.envarc_folder, envarc_folder);
    std::atexit(finish);
    std::signal(SIGINT, [](int) { offscreen::request_quit(); });
    std::signal(SIGTERM, [](int) { offscreen::request_quit(); });

    offscreen::set_up(std::move(setup));
    // Not 0, which would mean a start without a command line.
    start_up(1);
}

} // namespace

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    const std::vector<Options> runs = parse_options(argc, argv);
    if (runs.size() == 1) {
        run(runs.front());
    }
    run_all(runs, run);
}
