#!/usr/bin/env bash
# Runs a Windows program of the build folder: under_wine.sh PROGRAM.exe [ARGUMENT...]
# Wine starts in the background at the first program. Around many programs,
#   under_wine.sh --start    starts it once, so that each program starts quickly
#   under_wine.sh --end      ends it and all that runs under it
# Wine keeps its files in the build folder and shows nothing.
set -euo pipefail
root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)

export WINELOADER=/usr/lib/wine/wine64 WINESERVER=/usr/lib/wine/wineserver64
export WINEPREFIX=$root/build/windows/wine
export WINEDEBUG=-all
# Neither the desktop's menus nor web pages and .NET are wanted.
export WINEDLLOVERRIDES="winemenubuilder.exe,mscoree,mshtml="
unset DISPLAY

case "$1" in
  --start)
    mkdir -p "$WINEPREFIX"
    # What goes on in the background must not keep the caller's streams open.
    "$WINESERVER" --persistent </dev/null >/dev/null 2>&1 || true
    exec "$WINELOADER" wineboot --init </dev/null >/dev/null 2>&1
    ;;
  --end) exec "$WINESERVER" --kill --wait ;;
  *) exec "$WINELOADER" "$@" ;;
esac
