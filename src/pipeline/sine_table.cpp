// SPDX-License-Identifier: MIT
// Computes each entry in double from a float fraction of a turn.
#include "pipeline/sine_table.h"

#include <cmath>
#include <cstddef>
#include <numbers>

std::array<float, sine_entries> sine_table{};

void build_sine_table() {
    if (cosine(0) == 1.0F) {
        return;
    }
    for (int i = 0; i < sine_entries; ++i) {
        const float turns = static_cast<float>(i) * (1.0F / sine_period);
        sine_table[static_cast<std::size_t>(i)] =
            static_cast<float>(std::sin(turns * (2.0 * std::numbers::pi)));
    }
}
