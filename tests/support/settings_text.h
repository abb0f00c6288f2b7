// SPDX-License-Identifier: MIT
// Settings files for tests.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// The text of a settings file with the defaults, except these values (by their labels).
inline std::string settings_text(const std::map<std::string, std::string> &changes = {}) {
    const std::vector<std::pair<std::string, std::string>> defaults{
        {"gammas", "1.000000 1.000000 1.000000"},
        {"rotate", "0.000000"},
        {"obj style", "1"},
        {"clear style", "0"},
        {"fps", "1"},
        {"dots", "0"},
        {"dot lum", "25600"},
        {"dot lum in blur", "2560"},
        {"internal c2p enabled", "0"},
        {"envmap filename", "Zelvo_envmap.chunky"},
        {"ModeID", "0"},
        {"width", "320"},
        {"height", "256"},
    };
    std::string text;
    for (const auto &[label, value] : defaults) {
        const auto change = changes.find(label);
        text.append(label).append(": ").append(change != changes.end() ? change->second : value).append("\n");
    }
    return text + "*** Please don't edit this file! ***";
}
