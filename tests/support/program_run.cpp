// SPDX-License-Identifier: MIT
// Forks a process for each run, so that every run begins with the program's start values and may end its
// process.
#include "support/program_run.h"

#include "main_68k/start_up.h"
#include "settings/environment_map.h"
#include "support/refused_allocation.h"
#include "support/temporary_files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What the process of a run needs when it ends. Set only in that process.
struct Report {
    std::string path;
    std::vector<std::string> notes;
    std::function<void()> at_end;
};
Report report;

/// Writes one line per item, after a word for its kind.
void write_report() {
    if (report.at_end) {
        report.at_end();
    }
    std::ofstream file(report.path);
    file << "points " << offscreen::refusable_points() << '\n';
    file << "allocations " << allocations_counted() << '\n';
    for (const std::string &call : offscreen::calls()) {
        file << "call " << call << '\n';
    }
    for (const std::string &held : offscreen::held()) {
        file << "held " << held << '\n';
    }
    for (const std::string &line : report.notes) {
        file << "note " << line << '\n';
    }
}

/// Ends a run that would otherwise go on forever after the last of its events.
void end_run_that_goes_on(offscreen::Setup &setup) {
    constexpr int patience = 1000;
    const int last_event = setup.events.empty() ? 0 : setup.events.back().pass;
    const int last_pass = std::max(last_event, setup.last_pass) + patience;
    setup.on_frame = [on_frame = std::move(setup.on_frame), last_pass](const offscreen::Picture &frame) {
        if (frame.pass > last_pass) {
            std::fputs("the program goes on after the last of its events\n", stderr);
            std::abort();
        }
        if (on_frame) {
            on_frame(frame);
        }
    };
}

[[noreturn]] void run_in_this_process(offscreen::Setup setup, const RunOptions &options,
                                      const TemporaryFiles &files) {
    report = {files.path("report"), {}, options.at_end};
    if (std::freopen(files.path("output").c_str(), "w", stdout) == nullptr ||
        std::freopen(files.path("errors").c_str(), "w", stderr) == nullptr) {
        std::abort();
    }
    std::atexit(write_report);
    setup.records_calls = true;
    end_run_that_goes_on(setup);
    const int words = static_cast<int>(setup.command_line.size());
    offscreen::set_up(std::move(setup));
    if (options.before) {
        options.before();
    }
    refuse_allocation(options.refused_allocation);
    start_up(options.argument_count >= 0 ? options.argument_count : 1 + words);
}

std::string whole_file(const std::string &path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

void read_report(const std::string &path, ProgramRun &run) {
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t blank = line.find(' ');
        const std::string kind = line.substr(0, blank);
        const std::string rest = line.substr(blank + 1);
        if (kind == "points") {
            run.refusable_points = std::stoi(rest);
        } else if (kind == "allocations") {
            run.allocations = std::stoi(rest);
        } else if (kind == "call") {
            run.calls.push_back(rest);
        } else if (kind == "held") {
            run.held.push_back(rest);
        } else {
            run.notes.push_back(rest);
        }
    }
}

} // namespace

ProgramRun run_program(offscreen::Setup setup, const RunOptions &options) {
    const TemporaryFiles files;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    if (child == 0) {
        run_in_this_process(std::move(setup), options, files);
    }
    int status = 0;
    waitpid(child, &status, 0);

    ProgramRun run;
    run.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    run.output = whole_file(files.path("output"));
    run.errors = whole_file(files.path("errors"));
    read_report(files.path("report"), run);
    return run;
}

void note(const std::string &line) {
    report.notes.push_back(line);
}

offscreen::Setup viewer_setup(const std::string &object, int passes) {
    offscreen::Setup setup;
    setup.command_line = {test_file("golden/objects/" + object + ".lwo")};
    setup.stand_ins[default_envmap_filename] = test_file("golden/envmap.chunky");
    setup.last_pass = passes;
    return setup;
}

namespace {

offscreen::Event event(int pass, ULONG event_class, UWORD code) {
    offscreen::Event result;
    result.pass = pass;
    result.message.Class = event_class;
    result.message.Code = code;
    return result;
}

} // namespace

offscreen::Event key(int pass, char character) {
    return event(pass, IDCMP_VANILLAKEY, static_cast<unsigned char>(character));
}

offscreen::Event raw_key(int pass, UWORD code) {
    return event(pass, IDCMP_RAWKEY, code);
}

offscreen::Event mouse_move(int pass, WORD dx, WORD dy) {
    offscreen::Event result = event(pass, IDCMP_MOUSEMOVE, 0);
    result.message.MouseX = dx;
    result.message.MouseY = dy;
    return result;
}

offscreen::Event left_button(int pass) {
    return event(pass, IDCMP_MOUSEBUTTONS, SELECTDOWN);
}

offscreen::Event right_button(int pass) {
    return event(pass, IDCMP_MOUSEBUTTONS, MENUDOWN);
}

std::string test_file(const std::string &name) {
    return std::string(ZELVO_TEST_FOLDER) + "/" + name;
}
