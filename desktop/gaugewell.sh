#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts Gaugewell on the user's own home directory: ~/Gaugewell, or the folder that GAUGEWELL_HOME names. Makes it at the
# first start and puts the newer layouts and help of a newer program into it later. All else is found beside this file,
# so the whole tree runs wherever it stands.
set -eu
prefix=$(dirname "$(dirname "$(readlink -f "$0")")")
program=$prefix/lib/gaugewell/gaugewell

GAUGEWELL_HOME=${GAUGEWELL_HOME:-${HOME:?}/Gaugewell}
case $GAUGEWELL_HOME in
  /*) ;;
  *) GAUGEWELL_HOME=$PWD/$GAUGEWELL_HOME ;;
esac
export GAUGEWELL_HOME

# A database that has gone from a home is asked for by the program: an empty one in its place would look like lost data.
if [ ! -e "$GAUGEWELL_HOME/installed.txt" ] || [ -e "$GAUGEWELL_HOME/Tallywell.mdb" ]; then
  if ! reason=$("$prefix/lib/gaugewell/updatehome" "$GAUGEWELL_HOME" "$prefix/share/gaugewell" 2>&1 >/dev/null); then
    text="Gaugewell keeps its data in the folder '$GAUGEWELL_HOME' and cannot use it.
$reason
Set GAUGEWELL_HOME to name another folder."
    echo "$text" >&2
    # Started from the desktop's menu nobody sees that: the program shows it in a window.
    if [ ! -t 2 ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then "$program" --tell "$text"; fi
    exit 1
  fi
fi
exec "$program" "$@"
