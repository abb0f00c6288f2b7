# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# For scripts to source: answers --help with the comment at the head of the script.

# usage_error MESSAGE: reports wrong arguments and ends the script with exit code 2.
usage_error() {
    echo "scripts/${0##*/}: $1 (--help says more)" >&2
    exit 2
}

# answer_help ARGUMENT...: if the first argument is -h or --help, prints the comment at the head of the script and
# exits.
answer_help() {
    case ${1-} in
    -h | --help)
        sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    esac
}

# refuse_arguments ARGUMENT...: for scripts without arguments.
refuse_arguments() {
    answer_help "$@"
    [ $# -eq 0 ] || usage_error "unknown argument $1"
}
