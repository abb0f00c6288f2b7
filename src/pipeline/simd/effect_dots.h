// SPDX-License-Identifier: MIT
// What passes between the steps of the fast dots effect.
#pragma once

#include "pipeline/dots_effect.h"

#include <array>
#include <cstddef>

namespace fast {

/// The curve's dots on the screen, with entries to spare for a vector.
struct EffectDots {
    std::array<float, effect_dots_capacity> x;
    std::array<float, effect_dots_capacity> y;
    std::array<float, effect_dots_capacity> radius;
};

/// The parameters of the dots, which are the same in every frame; steps of a sum, whose rounding is part of
/// the picture.
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
