// SPDX-License-Identifier: MIT
// The command line of zelvo-render.
#pragma once

#include "platform/offscreen/host.h"
#include "view.h"

#include <optional>
#include <string>
#include <vector>

/// The tool's exit code for errors; the program itself ends with 0 or 20.
constexpr int exit_misuse = 2;

/// The command line's options for the run of one object.
struct Options {
    /// The words for the program itself: the object's file name.
    std::vector<std::string> program_words;
    std::optional<std::string> envmap;
    std::optional<std::string> env_folder;
    std::optional<std::string> envarc_folder;
    offscreen::ModeAnswer mode;
    int passes = 1;
    /// What the input script says, if there is one.
    offscreen::Setup script;
    std::optional<std::string> chunky_folder;
    std::optional<std::string> png_pattern;
    std::optional<std::string> gif;
    std::optional<std::string> sheet;
    int sheet_columns = 4;
    std::optional<std::string> video;
    View view;
    bool has_texts = true;
    bool is_transparent = false;
    bool has_progress = true;
    int from = 1;
    int every = 1;
    /// 16.16 seconds per reading; none for the real clock.
    std::optional<ULONG> tick = offscreen::default_tick;
};

/// Reads the command line and returns the options of one run, or of one run per object. Help and version are
/// printed and end the tool with code 0; an error ends it with code 2 and its reason on standard error.
std::vector<Options> parse_options(int argc, char **argv);
