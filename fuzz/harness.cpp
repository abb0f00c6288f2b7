// SPDX-License-Identifier: MIT
// Simulates a process: the linker's --wrap redirects exit and calloc to this file, and the offscreen host
// opens the files in memory.
#include "harness.h"

#include "display/frame_buffers.h"
#include "display/presentation.h"
#include "main_68k/viewer_state.h"
#include "pipeline/render_frame.h"
#include "support/model_builder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

bool is_thorough = false;

namespace fuzz {

std::map<std::string, std::string> files;

namespace {

/// Thrown instead of ending the process.
struct ProgramEnded {
    int exit_code;
};

bool is_running = false;

/// A stream that reads or writes one of `files`.
struct OpenFile {
    std::string *bytes;
    std::size_t at = 0;
    std::FILE *stream = nullptr;
};
std::vector<std::unique_ptr<OpenFile>> open_files;

OpenFile &file_of(void *cookie) {
    return *static_cast<OpenFile *>(cookie);
}

ssize_t read_bytes(void *cookie, char *buffer, std::size_t count) {
    OpenFile &file = file_of(cookie);
    const std::size_t left = file.bytes->size() - std::min(file.at, file.bytes->size());
    const std::size_t taken = std::min(count, left);
    std::memcpy(buffer, file.bytes->data() + std::min(file.at, file.bytes->size()), taken);
    file.at += taken;
    return static_cast<ssize_t>(taken);
}

ssize_t write_bytes(void *cookie, const char *buffer, std::size_t count) {
    file_of(cookie).bytes->append(buffer, count);
    return static_cast<ssize_t>(count);
}

/// As in a file, the position may be past the end.
int seek(void *cookie, off64_t *offset, int whence) {
    OpenFile &file = file_of(cookie);
    const off64_t base = whence == SEEK_SET   ? 0
                         : whence == SEEK_CUR ? static_cast<off64_t>(file.at)
                                              : static_cast<off64_t>(file.bytes->size());
    if (base + *offset < 0) {
        return -1;
    }
    *offset += base;
    file.at = static_cast<std::size_t>(*offset);
    return 0;
}

int close(void *cookie) {
    std::erase_if(open_files, [cookie](const auto &file) { return file.get() == cookie; });
    return 0;
}

std::FILE *open_in_memory(const char *name, const char *mode) {
    const bool is_writing = mode[0] == 'w';
    if (!is_writing && !files.contains(name)) {
        return nullptr;
    }
    std::string &bytes = files[name];
    if (is_writing) {
        bytes.clear();
    }
    open_files.push_back(std::make_unique<OpenFile>(OpenFile{&bytes}));
    OpenFile &file = *open_files.back();
    file.stream = fopencookie(&file, mode, {read_bytes, write_bytes, seek, close});
    return file.stream;
}

} // namespace

void silence_output() {
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::abort();
    }
}

Ending run(offscreen::Setup setup, const std::function<void()> &part) {
    reset_program_state();
    setup.open = open_in_memory;
    offscreen::set_up(std::move(setup));
    Ending ending;
    is_running = true;
    try {
        part();
    } catch (const ProgramEnded &ended) {
        ending.exit_code = ended.exit_code;
    }
    is_running = false;
    while (!open_files.empty()) {
        std::fclose(open_files.back()->stream);
    }
    return ending;
}

void open_frame(int width, int height) {
    allocate_frame_buffers(width, height);
}

void draw(int mode, int clear_style) {
    viewer.obj_style = mode;
    viewer.clear_style = clear_style;
    viewer.dots = 1;
    render_frame();
    swap_frame_buffers();
    viewer.spin_angle += viewer.rotate;
}

void require(bool holds, const char *claim) {
    if (!holds) {
        std::fprintf(stderr, "broken claim: %s\n", claim);
        std::abort();
    }
}

} // namespace fuzz

extern "C" {

[[noreturn]] void __real_exit(int code);
void *__real_calloc(std::size_t count, std::size_t size);

/// When the program ends, the stack unwinds into the harness. When the harness itself ends, the process ends.
[[noreturn]] void __wrap_exit(int code) {
    if (fuzz::is_running) {
        throw fuzz::ProgramEnded{code};
    }
    __real_exit(code);
}

void *__wrap_calloc(std::size_t count, std::size_t size) {
    if (fuzz::is_running && count > fuzz::largest_allocation / size) {
        return nullptr;
    }
    return __real_calloc(count, size);
}

} // extern "C"
