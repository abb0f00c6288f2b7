# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# For scripts to source: the answer to --help, which is the comment at the head of the script.

# usage_error MESSAGE: says what is wrong with the arguments and ends the script with 2.
usage_error() {
    echo "scripts/${0##*/}: $1 (--help says more)" >&2
    exit 2
}

# answer_help ARGUMENT...: prints the comment at the head of the script and ends it if -h or --help is the first argument.
answer_help() {
    case ${1-} in
    -h | --help)
        sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    esac
}

# refuse_arguments ARGUMENT...: for a script without any.
refuse_arguments() {
    answer_help "$@"
    [ $# -eq 0 ] || usage_error "unknown argument $1"
}
