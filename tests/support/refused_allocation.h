// SPDX-License-Identifier: MIT
// Makes one heap allocation of the program fail.
#pragma once

/// Counts the program's calls of calloc from now on and refuses the one with this number (from 1); 0 refuses
/// none. The test programs are linked so that these calls arrive here.
void refuse_allocation(int number);

/// How many calls there were since.
int allocations_counted();
