# Sourced by the scripts beside it: where the project is, and how it is built.

set -euo pipefail

project_folder="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
scripts_folder="$project_folder/scripts"
cd "$project_folder"

say() { printf '%s\n' "$*" >&2; }

fail() {
    say "${0##*/}: $*"
    exit 1
}

# configure PRESET [CMAKE OPTION...]
configure() {
    local preset="$1"
    shift
    case "$preset" in
        release | debug | asan | windows) ;;
        *) fail "there is no preset $preset; the presets are release, debug, asan and windows" ;;
    esac
    cmake --preset "$preset" "$@" >&2
}

# build PRESET [CMAKE BUILD OPTION...]
build() {
    local preset="$1"
    shift
    cmake --build --preset "$preset" "$@" >&2
}
