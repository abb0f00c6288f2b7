# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of zelvo-thumbnailer in bash.
_zelvo_thumbnailer() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-h --help --version' -- "$current")
        return
    fi
    if [[ $COMP_CWORD -eq 3 ]]; then
        mapfile -t COMPREPLY < <(compgen -W '128 256 512 1024' -- "$current")
        return
    fi
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -F _zelvo_thumbnailer zelvo-thumbnailer
