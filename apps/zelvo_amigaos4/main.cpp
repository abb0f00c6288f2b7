// SPDX-License-Identifier: MIT
// Zelvo on AmigaOS 4: the six platform headers include the system's own, and no host is linked.
#include "main_68k/start_up.h"

/// The C library's start-up code passes 0 arguments when the program is started from Workbench.
int main(int argc, char **) {
    start_up(argc);
}
