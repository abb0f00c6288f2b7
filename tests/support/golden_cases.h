// SPDX-License-Identifier: MIT
// The golden cases and their expected frames.
#pragma once

#include <string>
#include <vector>

/// One line of cases.txt.
struct GoldenCase {
    std::string object;
    std::string script;
    int width = 0;
    int height = 0;
    int passes = 0;

    std::string size() const { return std::to_string(width) + "x" + std::to_string(height); }
    std::string name() const { return object + "." + script + "." + size(); }
};

std::vector<GoldenCase> golden_cases();

/// The header of a binary PGM of this size.
std::string frame_header(int width, int height);

/// The frame of each pass, as a binary PGM. Fails the test if one is missing.
std::vector<std::string> expected_frames(const GoldenCase &golden);
