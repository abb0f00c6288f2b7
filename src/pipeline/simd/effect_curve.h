// SPDX-License-Identifier: MIT
// The curve of the dots effect as arrays: the parameters of its dots, and the dots on the screen.
#pragma once

#include "pipeline/dots_effect.h"

#include <array>
#include <cstddef>

namespace fast {

/// The curve's dots on the screen, with entries to spare for a vector. All 2286 pass at once: 27 KiB.
struct EffectDots {
    std::array<float, effect_dots_capacity> x;
    std::array<float, effect_dots_capacity> y;
    std::array<float, effect_dots_capacity> radius;
};

/// The parameters of the dots, the same in every frame. They are summed up step by step as in the plain loop,
/// since the sum's rounding is part of the picture.
struct EffectParameters {
    std::array<double, effect_dots_capacity> t{};
    std::size_t count = 0;

    constexpr EffectParameters() {
        for (double next = -effect_range; next < effect_range; next += effect_step) {
            t[count++] = next;
        }
    }
};

} // namespace fast
