// SPDX-License-Identifier: MIT
// Power series for the sine and cosine of one eighth turn, extended to the circle by symmetry.
#include "exact_trig.h"

#include <cmath>

namespace zelvo_data {

namespace {

// Both series are cut where the next term is below 1e-17 at 45 degrees, which is beyond double precision.
// Only multiplication, division and addition occur, and IEEE 754 defines those to the last bit.
double series_sum(double first_term, double squared, int first_divisor) {
    double term = first_term;
    double sum = first_term;
    for (int divisor = first_divisor; divisor < first_divisor + 18; divisor += 2) {
        term = -term * squared / (static_cast<double>(divisor) * (divisor + 1));
        sum += term;
    }
    return sum;
}

// The argument is a fraction of an eighth turn between 0 and 1.
double eighth_sine(double fraction) {
    const double angle = fraction * (pi / 4.0);
    return series_sum(angle, angle * angle, 2);
}

double eighth_cosine(double fraction) {
    const double angle = fraction * (pi / 4.0);
    return series_sum(1.0, angle * angle, 1);
}

} // namespace

double sine_of_turns(double turns) {
    const double eighths = (turns - std::floor(turns)) * 8.0;
    const double whole = std::floor(eighths);
    const double fraction = eighths - whole;
    const int octant = static_cast<int>(whole) & 7;
    const double sign = octant < 4 ? 1.0 : -1.0;
    switch (octant & 3) {
    case 0:
        return sign * eighth_sine(fraction);
    case 1:
        return sign * eighth_cosine(1.0 - fraction);
    case 2:
        return sign * eighth_cosine(fraction);
    default:
        return sign * eighth_sine(1.0 - fraction);
    }
}

double cosine_of_turns(double turns) {
    return sine_of_turns(turns + 0.25);
}

} // namespace zelvo_data
