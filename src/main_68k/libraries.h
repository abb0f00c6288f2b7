// SPDX-License-Identifier: MIT
// The four system libraries that the program runs on.
#pragma once

/// Opens graphics, intuition, lowlevel and asl in this order with their interfaces; the first that is missing
/// ends the program with its own message.
void open_libraries();

/// Closes the libraries that are open: asl, lowlevel, intuition, graphics.
void close_libraries();
