// SPDX-License-Identifier: MIT
// zelvo-math-values: prints two checksums over a million sines, cosines and powers of this system's C
// library. The first is over the values as the program rounds them, the second over the doubles.
#include "core/to_int.h"

#include <bit>
#include <cinttypes>
#include <cmath>
#include <cstdio>

namespace {

/// A checksum that depends on the order of its values but not on the processor's byte order.
struct Sum {
    std::uint64_t value = 14695981039346656037U;
    void add(std::uint64_t number) { value = (value ^ number) * 1099511628211U; }
};

/// Generates the same pseudo-random numbers on every system.
struct Numbers {
    std::uint64_t state = 88172645463325252U;

    /// A number from -1 to 1.
    double next() {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return static_cast<double>(static_cast<std::int64_t>(state)) / 9223372036854775808.0;
    }
};

} // namespace

int main() {
    constexpr int values = 1000000;
    // Small angles, those after much mouse movement, and those after years of spinning.
    constexpr double ranges[] = {10.0, 1e4, 1e15};
    Numbers numbers;
    Sum used;
    Sum doubles;
    for (int i = 0; i < values; ++i) {
        const double angle = numbers.next() * ranges[i % 3];
        const double gamma = 0.02 + std::fabs(numbers.next()) * 2.98;
        const double sine = std::sin(angle);
        const double cosine = std::cos(angle);
        const double power = std::pow(i % 256 / 255.0, 1.0 / gamma);
        used.add(std::bit_cast<std::uint32_t>(static_cast<float>(sine)));
        used.add(std::bit_cast<std::uint32_t>(static_cast<float>(cosine)));
        used.add(static_cast<std::uint32_t>(to_int(power * 255.0)));
        doubles.add(std::bit_cast<std::uint64_t>(sine));
        doubles.add(std::bit_cast<std::uint64_t>(cosine));
        doubles.add(std::bit_cast<std::uint64_t>(power));
    }
    std::printf("%016" PRIx64 " %016" PRIx64 "\n", used.value, doubles.value);
}
