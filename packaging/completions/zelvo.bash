# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of zelvo in bash.
_zelvo() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} values=
    COMPREPLY=()
    # bash takes --window=2 for three words.
    if [[ $current == = ]]; then
        current=
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
        [[ $option != --window ]] || values='1 2 3 4'
    fi
    case $option in
    --size) values='160x128 320x256 640x512 800x600 1920x1080' ;;
    --env | --envarc)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --envmap | --record)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    esac
    if [[ -n $values ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$values" -- "$current")
        return
    fi
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-h --help --version --fullscreen --window --size --env --envarc --envmap --import --record' -- "$current")
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
