// SPDX-License-Identifier: MIT
// Zelvo on AmigaOS 4, where the six platform headers are the system's own and no host is linked.
#include "main_68k/start_up.h"

/// The start-up code of the C library gives 0 arguments when the program is started from Workbench.
int main(int argc, char **) {
    start_up(argc);
}
