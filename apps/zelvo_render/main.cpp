// SPDX-License-Identifier: MIT
// zelvo-render: runs the viewer on the offscreen host and writes its pictures to files.
#include "failure.h"
#include "main_68k/start_up.h"
#include "object_runs.h"
#include "options.h"
#include "outputs.h"
#include "platform/offscreen/host.h"
#include "platform/posix/folders.h"
#include "platform/posix/standard_streams.h"
#include "platform/shared/frame_sum.h"
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

/// What the run repeats, if it does; and the sum of its own frames, as many as there are to compare.
std::optional<offscreen::RecordedFrames> recorded_frames;
host::FrameSum frames;

void take_frame(const offscreen::Picture &frame) {
    if (recorded_frames && frame.pass <= recorded_frames->passes) {
        frames.add(frame.pixels, frame.width, frame.height);
    }
    outputs->take_frame(frame);
}

void finish() {
    outputs->complete();
    outputs.reset();
    env_folder.reset();
    envarc_folder.reset();
    if (recorded_frames && frames.value() != recorded_frames->sum) {
        fail("the frames are not those of the recorded run");
    }
}

/// Writes the settings file of a volume that begins with one, unless the volume's folder is the user's.
void write_settings(const std::string &volume, const std::optional<TemporaryFolder> &folder,
                    const offscreen::Setup &setup) {
    const auto settings = setup.settings.find(volume);
    if (folder && settings != setup.settings.end()) {
        std::ofstream(folder->path() + "/Zelvo.vars", std::ios::binary) << settings->second;
    }
}

/// The user's folder, or a new temporary one.
std::string volume_folder(const std::optional<std::string> &chosen,
                          std::optional<TemporaryFolder> &temporary) {
    return chosen ? *chosen : temporary.emplace().path();
}

void run(const Options &options) {
    offscreen::Setup setup = options.script;
    setup.command_line = options.program_words;
    setup.default_mode = options.mode;
    setup.tick = options.tick;
    setup.last_pass = options.passes;
    if (options.envmap) {
        setup.stand_ins[default_envmap_filename] = *options.envmap;
    } else if (!setup.stand_ins.contains(default_envmap_filename) &&
               !std::filesystem::exists(default_envmap_filename)) {
        setup.stand_ins[default_envmap_filename] = host::installed_data_path(default_envmap_filename);
    }
    apply_view(options.view, setup);
    setup.on_frame = take_frame;
    setup.on_picture = [](const offscreen::Picture &picture) { outputs->take_picture(picture); };

    outputs.emplace(options);
    setup.volumes["ENV"] = volume_folder(options.env_folder, env_folder);
    setup.volumes["ENVARC"] = volume_folder(options.envarc_folder, envarc_folder);
    write_settings("ENV", env_folder, setup);
    write_settings("ENVARC", envarc_folder, setup);
    recorded_frames = setup.recorded_frames;
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
