# SPDX-License-Identifier: MIT
# Completion of zelvo in fish.
complete -c zelvo -f -a '(__fish_complete_suffix .lwo .lwob)'
complete -c zelvo -s h -l help -d 'Print a summary and exit'
complete -c zelvo -l version -d 'Print the version and exit'
complete -c zelvo -l fullscreen -d 'Open a full screen'
complete -c zelvo -l window -f -a '1 2 3 4' -d 'Open a window with pixels of this size'
complete -c zelvo -l size -x -a '160x128 320x256 640x512 800x600 1920x1080' -d 'Size of the first screen'
complete -c zelvo -l env -x -a '(__fish_complete_directories)' -d 'Folder of the settings of the session'
complete -c zelvo -l envarc -x -a '(__fish_complete_directories)' -d 'Folder of the lasting settings'
complete -c zelvo -l envmap -r -F -d 'Texture'
complete -c zelvo -l import -d 'Convert an object of another format first'
complete -c zelvo -l record -r -F -d 'Write the run as an input script'
