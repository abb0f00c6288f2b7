#compdef zelvo-thumbnailer
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a short help and exit]' \
    '(- *)--version[print the version and exit]' \
    '1:object:_files -g "(#i)*.lwo(|b)"' \
    '2:picture:_files' \
    '3:size:(128 256 512 1024)'
