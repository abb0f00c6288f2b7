#compdef zelvo
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a summary and exit]' \
    '(- *)--version[print the version and exit]' \
    '(--window)--fullscreen[open a full screen]' \
    '(--fullscreen)--window=-[open a window with pixels of this size]::factor:(1 2 3 4)' \
    '--size=[size of the first screen]:size:(160x128 320x256 640x512 800x600 1920x1080)' \
    '--env=[folder of the settings of the session]:folder:_files -/' \
    '--envarc=[folder of the lasting settings]:folder:_files -/' \
    '--envmap=[texture]:texture:_files' \
    '--import[convert an object of another format first]' \
    '--record=[write the run as an input script]:script:_files' \
    '1:object:_files -g "(#i)*.lwo(|b)"'
