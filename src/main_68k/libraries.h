// SPDX-License-Identifier: MIT
// The four system libraries that the program uses.
#pragma once

/// Opens graphics, intuition, lowlevel and asl, in this order, with their interfaces. If one is missing, the
/// program ends with that library's message.
void open_libraries();

/// Closes the libraries that are open, in the order asl, lowlevel, intuition, graphics.
void close_libraries();
