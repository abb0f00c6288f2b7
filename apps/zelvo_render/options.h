// SPDX-License-Identifier: MIT
// The command line of zelvo-render.
#pragma once

#include "platform/offscreen/host.h"
#include "view.h"

#include <optional>
#include <string>
#include <vector>

/// Exit code of the tool's own mistakes; the program's own are 0 and 20.
constexpr int exit_misuse = 2;

/// What the command line asks for, for one object.
struct Options {
    /// The words that the program itself gets: the object's file name.
    std::vector<std::string> program_words;
    std::optional<std::string> envmap;
    std::optional<std::string> env_folder;
    std::optional<std::string> envarc_folder;
    offscreen::ModeAnswer mode;
    int passes = 1;
    std::optional<std::string> input;
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

/// Reads the command line, which asks for one run or for one per object. Prints help or version and ends with
/// code 0, or says on standard error what is wrong and ends with code 2.
std::vector<Options> parse_options(int argc, char **argv);
