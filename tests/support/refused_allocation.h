// SPDX-License-Identifier: MIT
// Makes one heap allocation of the program fail.
#pragma once

/// Counts the program's zeroed heap allocations from here on and refuses the one of this number, from 1; 0
/// refuses none. The test programs are linked so that the program's calloc arrives here first.
void refuse_allocation(int number);

/// How many there were since.
int allocations_counted();
