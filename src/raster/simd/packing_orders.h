// SPDX-License-Identifier: MIT
// For each set of up to eight lanes: the lanes in the set, in order, and then the others.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace fast {

/// Vectors that are packed by table have no more lanes.
constexpr std::size_t packed_lanes = 8;

/// Lane numbers by the set's bits, lane 0 the lowest. Of a set of the first four lanes, the first four
/// numbers are below four as well, and so with two lanes and one.
using PackingOrders = std::array<std::array<std::uint8_t, packed_lanes>, 1U << packed_lanes>;

constexpr PackingOrders packing_orders_of_all_sets() {
    PackingOrders orders{};
    for (std::size_t bits = 0; bits < orders.size(); ++bits) {
        std::size_t at = 0;
        for (const std::size_t is_in_set : {std::size_t{1}, std::size_t{0}}) {
            for (std::size_t lane = 0; lane < packed_lanes; ++lane) {
                if ((bits >> lane & 1U) == is_in_set) {
                    orders[bits][at++] = static_cast<std::uint8_t>(lane);
                }
            }
        }
    }
    return orders;
}

inline constexpr PackingOrders packing_orders = packing_orders_of_all_sets();

} // namespace fast
