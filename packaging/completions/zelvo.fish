# SPDX-License-Identifier: MIT
# Completion of zelvo in fish.
complete -c zelvo -f -a '(__fish_complete_suffix .lwo .lwob)'
complete -c zelvo -s h -l help -d 'Print a summary and exit'
complete -c zelvo -l version -d 'Print the version and exit'
