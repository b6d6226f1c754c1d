#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts Gaugewell with the user's home directory: ~/Gaugewell, or the folder in GAUGEWELL_HOME. Creates it at the first
# start and updates its layouts and help at later ones. All other files are found relative to this one, so the tree can be
# moved.
set -eu
prefix=$(dirname "$(dirname "$(readlink -f "$0")")")
program=$prefix/lib/gaugewell/gaugewell

GAUGEWELL_HOME=${GAUGEWELL_HOME:-${HOME:?}/Gaugewell}
case $GAUGEWELL_HOME in
  /*) ;;
  *) GAUGEWELL_HOME=$PWD/$GAUGEWELL_HOME ;;
esac
export GAUGEWELL_HOME

# If the database of a used home is missing, the program asks for it: an empty new one would look like lost data.
if [ ! -e "$GAUGEWELL_HOME/installed.txt" ] || [ -e "$GAUGEWELL_HOME/Tallywell.mdb" ]; then
  if ! reason=$("$prefix/lib/gaugewell/updatehome" "$GAUGEWELL_HOME" "$prefix/share/gaugewell" 2>&1 >/dev/null); then
    text="Gaugewell keeps its data in the folder '$GAUGEWELL_HOME' and cannot use it.
$reason
Set GAUGEWELL_HOME to name another folder."
    echo "$text" >&2
    # Started from the desktop's menu there is no terminal: the program shows the text in a window.
    if [ ! -t 2 ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then "$program" --message "$text"; fi
    exit 1
  fi
fi
exec "$program" "$@"
