#compdef zelvo
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a summary and exit]' \
    '(- *)--version[print the version and exit]' \
    '1:object:_files -g "(#i)*.lwo(|b)"'
