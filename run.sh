#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the packages needed, builds Gaugewell, installs it into ~/Gaugewell and starts it.
# With --demo: installs into ~/Gaugewell-demo, with a store of invented surveys.
set -euo pipefail
cd "$(dirname "$0")"
case "${1:-}" in
  "") home="${GAUGEWELL_HOME:-$HOME/Gaugewell}" ;;
  --demo) home="${GAUGEWELL_DEMO_HOME:-$HOME/Gaugewell-demo}" ;;
  *) echo "usage: run.sh [--demo]" >&2; exit 2 ;;
esac

tools/packages.sh build run
echo "Building..."
cmake --preset release -DBUILD_TESTING=OFF >/dev/null
cmake --build --preset release
if [ "${1:-}" = --demo ] && [ ! -e "$home/Tallywell.mdb" ]; then
  echo "Making the demonstration in $home..."
  tools/demo.sh build/release "$home"
fi
echo "Installing into $home (your database and your own files there are kept)..."
cmake --install build/release --prefix "$home" >/dev/null
export GAUGEWELL_HOME="$home" # with --demo not the user's

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  echo "Starting $home/gaugewell"
  exec "$home/gaugewell"
fi

echo "There is no display. Starting on a virtual one."
tools/packages.sh display
number=${GAUGEWELL_DISPLAY:-99}
Xvfb ":$number" -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 &
secret=$(mktemp -d) # accessible by its owner only
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$secret"' EXIT
export DISPLAY=":$number"
for _ in $(seq 50); do [ -S "/tmp/.X11-unix/X$number" ] && break; sleep 0.1; done
openbox >/dev/null 2>&1 &
password=$(od -An -N4 -tx1 /dev/urandom | tr -d ' \n') # VNC allows 8 characters
echo "$password" >"$secret/password"
x11vnc -display "$DISPLAY" -localhost -forever -passwdfile "$secret/password" -quiet >/dev/null 2>&1 &
echo "Look at it with a VNC viewer at 127.0.0.1:5900 (this machine only); the password is $password"
echo "Quit the program with Ctrl+Q to end."
"$home/gaugewell"
