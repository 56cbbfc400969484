#!/usr/bin/env bash
# session.sh PROGRAM [SCRIPT [ARGUMENTS]]: use.py, or another script of this folder, on a display and a session bus that
# nobody else has, with a window manager.
set -eu
here="$(dirname "$0")"
program="$1"
script="${2:-use.py}"
shift $(($# < 2 ? $# : 2))
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
mkdir -m 700 "$folder/run"
export XDG_RUNTIME_DIR="$folder/run" XDG_CONFIG_HOME="$folder/config" XDG_DATA_HOME="$folder/data"
export XDG_CACHE_HOME="$folder/cache" XDG_STATE_HOME="$folder/state" SDL_AUDIODRIVER=dummy
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 NO_AT_BRIDGE=0
ffmpeg -v error -f lavfi -i testsrc=s=320x180:r=25:d=4 -f lavfi -i sine=440:r=48000:d=4 -g 12 -bf 0 \
    -c:v mpeg4 -q:v 4 -c:a aac "$folder/clip.mp4" </dev/null
# shellcheck disable=SC2016
xvfb-run -a -s "-screen 0 1600x1000x24" dbus-run-session -- bash -c \
    'openbox --startup "touch $1/managed" & shift; exec /usr/bin/python3 -B -W ignore::DeprecationWarning "$@"' - \
    "$folder" "$here/$script" "$program" "$folder" "$@"
