#!/usr/bin/env bash
# session.sh PROGRAM: walk.py with a display and a session bus that nobody else has.
set -eu
here="$(dirname "$0")"
XDG_RUNTIME_DIR="$(mktemp -d)"
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export XDG_RUNTIME_DIR QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 NO_AT_BRIDGE=0
# The bindings belong to the python of the system.
xvfb-run -a dbus-run-session -- /usr/bin/python3 -B -W ignore::DeprecationWarning "$here/walk.py" "$1"
