#!/bin/sh
# Runs a Windows program in the bench's Wine prefix: wine.sh PROGRAM.exe ARGUMENT…
home=${VEK_BENCH_HOME:-$(dirname "$0")/../build/bench}
export WINEPREFIX="${WINEPREFIX:-$(realpath -m "$home")/prefix}"
export WINEDEBUG="${WINEDEBUG:--all}"
unset DISPLAY WAYLAND_DISPLAY
exec wine "$@"
