// SPDX-License-Identifier: MIT
// The instruction sets that the fast forms were compiled for and that this processor has.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One bit per set, those with the widest vectors first.
std::vector<std::int64_t> instruction_sets();

/// Makes the fast forms use only this set; 0 restores the best one.
void use_instruction_set(std::int64_t set);

/// Its name, for messages.
std::string instruction_set_name(std::int64_t set);
