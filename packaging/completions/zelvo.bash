# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of zelvo in bash.
_zelvo() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-h --help --version' -- "$current")
        return
    fi
    compopt -o filenames
    mapfile -t COMPREPLY < <(
        compgen -d -- "$current"
        compgen -f -X '!*.[lL][wW][oO]' -- "$current"
        compgen -f -X '!*.[lL][wW][oO][bB]' -- "$current"
    )
}
complete -F _zelvo zelvo
