#!/usr/bin/env bash
# Walks the desktop program through the accessibility bus, as a screen reader user
# does, in an X server and D-Bus session of its own:
#   tools/accessibility-walk.sh [pemlo executable] [sounding]
# Needs Xvfb, dbus-x11, at-spi2-core, python3-pyatspi, x11-utils (tools/install-deps.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
program=${1:-build/src/app/pemlo}
sounding=${2:-../shared/soundings/b003688.txt}

display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 1920x1080x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
trap 'kill $xvfb 2>/dev/null || true; [ -n "${DBUS_SESSION_BUS_PID:-}" ] && kill "$DBUS_SESSION_BUS_PID" 2>/dev/null || true' EXIT
export DISPLAY=$display
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

eval "$(dbus-launch --sh-syntax)"
/usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
sleep 1
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 LC_ALL=C.UTF-8
exec /usr/bin/python3 tools/accessibility-walk.py "$program" "$sounding"
