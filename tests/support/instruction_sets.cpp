// SPDX-License-Identifier: MIT
// The instruction sets, as chosen by Highway at run time.
#include "support/instruction_sets.h"

#include "hwy/targets.h"

std::vector<std::int64_t> instruction_sets() {
    use_instruction_set(0);
    std::vector<std::int64_t> sets;
    // The lowest bit is the best set. Sets that nothing was compiled for are left out.
    for (std::int64_t rest = hwy::SupportedTargets() & HWY_TARGETS; rest != 0; rest &= rest - 1) {
        sets.push_back(rest & -rest);
    }
    return sets;
}

void use_instruction_set(std::int64_t set) {
    hwy::SetSupportedTargetsForTest(set);
}

std::string instruction_set_name(std::int64_t set) {
    return hwy::TargetName(set);
}
