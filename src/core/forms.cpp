// SPDX-License-Identifier: MIT
// The choice between the forms, which starts at the fast one.
#include "core/forms.h"

bool draws_fast = true;
