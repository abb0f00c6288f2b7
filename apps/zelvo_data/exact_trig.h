// SPDX-License-Identifier: MIT
// Sine and cosine built from plain arithmetic only, so that every C library yields the same data files.
#pragma once

namespace zelvo_data {

// Angles are given in whole turns (1.0 = 360 degrees); any finite value is accepted.
double sine_of_turns(double turns);
double cosine_of_turns(double turns);

constexpr double pi = 3.14159265358979323846;

// Convenience for design values that read most naturally in degrees.
inline double sine_of_degrees(double degrees) {
    return sine_of_turns(degrees / 360.0);
}
inline double cosine_of_degrees(double degrees) {
    return cosine_of_turns(degrees / 360.0);
}

} // namespace zelvo_data
