// SPDX-License-Identifier: MIT
// The time between two passes. A page gets control back after each pass and calls the next one when the
// display wants a picture, where other hosts wait within the pass. The program's clock counts that time as
// theirs does: in the input stage of the pass that follows.
#pragma once

namespace web {

/// The page has called for a pass, in which the program's clock is to count that many seconds of waiting.
void note_start_of_pass(double waited);

/// The pass has ended, or the program is about to make its first.
void note_end_of_pass();

} // namespace web
