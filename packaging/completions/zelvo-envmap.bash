# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of zelvo-envmap in bash.
_zelvo_envmap() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    --turn | --exposure | --contrast | --blur) return ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-h --help --version --panorama --turn --ball --exposure --contrast --blur
            --preview --to-png' -- "$current")
        return
    fi
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -F _zelvo_envmap zelvo-envmap
