# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of zelvo-render in bash.
_zelvo_render() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} options values=
    COMPREPLY=()
    # bash takes --mode=phong for three words.
    if [[ $current == = ]]; then
        current=
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $option in
    --mode) values='effect envmap texturemap lightsourced phong z-light dots' ;;
    --clear) values='clear fade blur rise' ;;
    --background) values='black transparent' ;;
    --clock) values='fixed real' ;;
    --size) values='100x75 160x128 256x256 320x256 512x512 640x512' ;;
    --mode-id | --passes | --columns | --from | --every | --tick | --tilt | --gamma | --turntable) return ;;
    --env | --envarc | --chunky)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --envmap | --input | --png | --gif | --sheet | --y4m)
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
        options='-h --help --version --envmap --size --mode-id --env --envarc --passes --input --chunky --png --gif
            --sheet --y4m --columns --from --every --clock --tick --mode --spin --tilt --clear --dots --gamma --turntable
            --no-texts --background'
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    compopt -o filenames
    mapfile -t COMPREPLY < <(
        compgen -d -- "$current"
        compgen -f -X '!*.[lL][wW][oO]' -- "$current"
        compgen -f -X '!*.[lL][wW][oO][bB]' -- "$current"
    )
}
complete -F _zelvo_render zelvo-render
