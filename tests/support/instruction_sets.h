// SPDX-License-Identifier: MIT
// The instruction sets that the fast forms were compiled for and this processor has.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One bit each, the widest vectors first.
std::vector<std::int64_t> instruction_sets();

/// Makes the fast forms use this one alone, and after 0 the best again.
void use_instruction_set(std::int64_t set);

/// Its name, for messages.
std::string instruction_set_name(std::int64_t set);
