# SPDX-License-Identifier: MIT
# Completion of zelvo-thumbnailer in fish.
complete -c zelvo-thumbnailer -s h -l help -d 'Print a short help and exit'
complete -c zelvo-thumbnailer -l version -d 'Print the version and exit'
