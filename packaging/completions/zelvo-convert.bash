# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of zelvo-convert in bash.
_zelvo_convert() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # bash takes --up=Z for three words.
    if [[ $current == = ]]; then
        current=
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $option in
    --up)
        mapfile -t COMPREPLY < <(compgen -W 'Y Z' -- "$current")
        return
        ;;
    --points | --polygons | --timeout | --memory) return ;;
    -d | --folder)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-h --help --version -o --output -d --folder --up --flip --triangles
            --points --polygons --info --view --cached --timeout --memory' -- "$current")
        return
    fi
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -F _zelvo_convert zelvo-convert
