#!/usr/bin/env bash
# Walks the desktop program through the accessibility bus, as a screen reader user
# does, in an X server and D-Bus session of its own:
#   tools/accessibility-walk.sh [pemlo executable] [sounding]
# Needs Xvfb, dbus-x11, at-spi2-core, python3-pyatspi, x11-utils (tools/install-deps.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
program=${1:-build/src/app/pemlo}
sounding=${2:-../shared/soundings/b003688.txt}

# The servers started here keep no descriptor of the caller's: one that outlived the
# walk would otherwise hold, say, the lock a build script took around it.
for fd in /proc/$$/fd/*; do
  fd=${fd##*/}
  if [ "$fd" -gt 2 ] && [ "$fd" -lt 255 ]; then eval "exec $fd>&-"; fi
done

# Everything started here ends with the walk, whatever its outcome.
xvfb="" launcher=""
cleanup() {
  [ -n "$launcher" ] && { pkill -P "$launcher" 2>/dev/null || true; kill "$launcher" 2>/dev/null || true; }
  [ -n "${DBUS_SESSION_BUS_PID:-}" ] && { kill "$DBUS_SESSION_BUS_PID" 2>/dev/null || true; }
  [ -n "$xvfb" ] && { kill "$xvfb" 2>/dev/null || true; }
}
trap cleanup EXIT

display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 1920x1080x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
export DISPLAY=$display
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

eval "$(dbus-launch --sh-syntax)"
/usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
launcher=$!
# A Qt program asks the session bus for the accessibility bus once, when it starts; one
# started before the launcher holds its name never appears to a screen reader (asking
# then would even start a second launcher, by activation). On a loaded machine the
# launcher can take seconds, so wait until the name has its owner.
for _ in $(seq 300); do
  dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
    org.freedesktop.DBus.NameHasOwner string:org.a11y.Bus 2>/dev/null | grep -q "boolean true" && break
  sleep 0.1
done
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 LC_ALL=C.UTF-8
/usr/bin/python3 tools/accessibility-walk.py "$program" "$sounding"
