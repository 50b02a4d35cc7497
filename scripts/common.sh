# Sourced by the scripts beside it: where the checkout is, how to speak, how to fail.
# shellcheck shell=bash
set -euo pipefail

# shellcheck disable=SC2034 # read by the scripts
ZN_CALLED_FROM=$PWD
ZN_ROOT=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.." >/dev/null && pwd -P)
cd -- "$ZN_ROOT"

# Qt takes file names in the locale's character set; the POSIX locale would lose every letter beyond ASCII.
if [ "$(locale charmap 2>/dev/null)" != UTF-8 ]; then
    export LC_ALL=C.UTF-8
fi

# ccache and npm fail without a place for their caches.
if [ ! -w "${HOME:-/nonexistent}" ]; then
    export HOME=$ZN_ROOT/build/home
    mkdir -p "$HOME"
fi

say() { printf '== %s\n' "$*"; }

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

misuse() {
    printf '%s: %s\nscripts/%s --help tells more.\n' "${0##*/}" "$1" "${0##*/}" >&2
    exit 2
}

# build_preset NAME [TARGET...]: configures and builds in build/NAME.
build_preset() {
    local preset=$1 log=build/configure-$1.log
    shift
    say "building the preset $preset"
    mkdir -p build
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" && die "configuring failed"; }
    # Another checkout of the same sources, wherever it lies, finds what this one has compiled.
    CCACHE_BASEDIR=$ZN_ROOT CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros \
        cmake --build "build/$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
