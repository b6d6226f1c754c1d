#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# testpackages.sh BUILD: makes both packages of a build directory. Installs each, starts it on a virtual display with an
# empty home, installs it again over the used home, and removes it. The Debian package also takes the place of a package of
# version 2.1.0, whose home has a store of the version before. Without root the .deb is only unpacked, and nothing upgraded.
set -euo pipefail
build=$(cd "$1" && pwd)
source=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
installed=""
finish() {
  local ended=$?
  set +e
  [ -z "$installed" ] || dpkg --purge gaugewell >/dev/null
  # shellcheck disable=SC2046
  kill $(jobs -p) 2>/dev/null
  rm -rf "$work"
  exit "$ended"
}
trap finish EXIT
fail() { echo "testpackages.sh: $1" >&2; exit 1; }
within() { # within SECONDS WHAT COMMAND...: repeats the command until it succeeds
  local seconds=$1 what=$2
  shift 2
  for _ in $(seq $((seconds * 10))); do "$@" && return; sleep 0.1; done
  fail "not within $seconds seconds: $what"
}

start_display() {
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
  within 10 "a display" test -s "$work/display"
  DISPLAY=:$(cat "$work/display")
  export DISPLAY
  openbox >/dev/null 2>&1 &
  unset WAYLAND_DISPLAY XDG_CONFIG_HOME GAUGEWELL_HOME
  # Ignores leaks of the message bus library.
  echo "leak:libdbus-1.so" >"$work/suppressions"
  export LSAN_OPTIONS="suppressions=$work/suppressions:print_suppressions=0"
}

# another_window WINDOW: sets $window to another visible window of the program.
another_window() { window=$(xdotool search --onlyvisible --name '^Gaugewell$' 2>/dev/null | grep -vx "$1"); }

run_once() { # run_once LAUNCHER: starts, clicks the splash form, quits the main window by Ctrl+Q
  "$1" >"$work/log" 2>&1 &
  local program=$! splash
  within 20 "the splash form" another_window none
  splash=$window
  xdotool mousemove --window "$splash" 60 60 click 1
  within 20 "the main window" another_window "$splash"
  [ "$(xdotool getwindowgeometry "$window" | grep -c 'Geometry: 1180x660')" = 1 ] || fail "the main window has another size"
  xdotool windowfocus --sync "$window" key ctrl+q
  wait "$program" || { cat "$work/log" >&2; fail "the program exited with an error"; }
}

sql() {
  python3 -c 'import sqlite3, sys
with sqlite3.connect(sys.argv[1]) as store: print(store.execute(sys.argv[2]).fetchone())' "$HOME/Gaugewell/Tallywell.mdb" "$1"
}

check_home() { # check_home LAUNCHER INSTALL...: starts, installs again and starts again
  local launcher=$1 home="$HOME/Gaugewell"
  shift
  run_once "$launcher"
  for file in Tallywell.mdb template.xls log.rpt scatter.rpt "GWL HELP 2.1.HLP" slides/index.png installed.txt; do
    [ -s "$home/$file" ] || fail "missing in a fresh home: $file"
  done
  grep -qx "DBQ=$home/Tallywell.mdb" "$HOME/.config/gaugewell/datasources.ini" || fail "another database is in use"
  sql "insert into survey (sdate, custid) values ('2026-01-31', 7)" >/dev/null
  echo "<!-- own -->" >>"$home/log.rpt"
  "$@"
  run_once "$launcher"
  [ "$(sql "select sdate, custid from survey")" = "('2026-01-31', 7)" ] || fail "an upgrade has lost a survey"
  [ "$(tail -1 "$home/log.rpt")" = "<!-- own -->" ] || fail "an upgrade has replaced a changed layout"
  cmp -s "$home/scatter.rpt" "$(dirname "$(dirname "$launcher")")/share/gaugewell/scatter.rpt" || fail "another layout"
}

check_refusal() { # check_refusal LAUNCHER: a home that cannot be made is reported, in a window too, and the start fails
  local launcher=$1
  GAUGEWELL_HOME=/dev/null/home "$launcher" >"$work/log" 2>&1 &
  within 20 "the message" another_window none
  xdotool windowfocus --sync "$window" key Return
  ! wait $! || fail "it has started without a home"
  grep -q "^The folder '/dev/null/home' cannot be made" "$work/log" || fail "it does not report that the home cannot be made"
}

check_desktop() { # check_desktop PREFIX
  desktop-file-validate "$1/share/applications/gaugewell.desktop"
  appstreamcli validate --no-net "$1"/share/metainfo/*.xml >"$work/log" || { cat "$work/log" >&2; fail "metainfo"; }
  for file in icons/hicolor/scalable/apps/gaugewell.svg doc/gaugewell/copyright; do
    [ -s "$1/share/$file" ] || fail "missing: share/$file"
  done
}

echo "Packing..."
for generator in DEB TGZ; do
  cpack -G "$generator" --config "$build/CPackConfig.cmake" -B "$work/made" >"$work/log" 2>&1 ||
    { cat "$work/log" >&2; fail "cpack -G $generator"; }
done
deb=$(echo "$work"/made/*.deb)
archive=$(echo "$work"/made/*.tar.gz)
start_display

echo "Archive..."
export HOME="$work/home of the archive"
mkdir -p "$HOME" "$work/any folder"
unpack() { tar -xzf "$archive" -C "$work/any folder"; }
unpack
launcher=$(echo "$work/any folder"/*/bin/gaugewell)
check_desktop "${launcher%/bin/gaugewell}"
check_refusal "$launcher"
check_home "$launcher" unpack

# make_last_version: makes $last, a package of version 2.1.0, which brings an empty store of version 1.
make_last_version() {
  local tree="$work/last version"
  last="$work/gaugewell_2.1.0.deb"
  dpkg-deb -R "$deb" "$tree"
  sed -i 's/^Version: .*/Version: 2.1.0/' "$tree/DEBIAN/control"
  rm "$tree/usr/share/gaugewell/Tallywell.mdb"
  "$build/tools/makestore" "$tree/usr/share/gaugewell/Tallywell.mdb" kvtwpa "$source/tests/data/schema1.sql"
  dpkg-deb --root-owner-group -b "$tree" "$last" >/dev/null
}

check_upgrade() { # the last version's home keeps its rows, gets the present store and can be gone back to by its copy
  export HOME="$work/home of the last version"
  mkdir "$HOME"
  install "$last"
  [ "$(dpkg-query -W -f='${Version}' gaugewell)" = 2.1.0 ] || fail "the last version is not installed"
  /usr/lib/gaugewell/updatehome "$HOME/Gaugewell" /usr/share/gaugewell
  sql "insert into survey (sdate, custid) values ('2026-01-31', 7)" >/dev/null
  [ "$(sql "pragma user_version")" = "(1,)" ] || fail "the last version's store is not of version 1"
  install "$deb"
  run_once /usr/bin/gaugewell
  [ "$(dpkg-query -W -f='${Version}' gaugewell)" != 2.1.0 ] || fail "the new version is not installed"
  [ "$(sql "pragma user_version")" = "(2,)" ] || fail "the store has not been upgraded"
  [ "$(sql "select sdate, custid from survey")" = "('2026-01-31', 7)" ] || fail "the upgrade has lost a survey"
  [ "$(find "$HOME/Gaugewell/backup" -name 'Tallywell-*.mdb' | wc -l)" = 1 ] || fail "no copy before the upgrade"
}

echo "Debian package..."
export HOME="$work/home"
mkdir "$HOME"
if [ "$(id -u)" -eq 0 ]; then
  dpkg-query -W gaugewell >/dev/null 2>&1 && fail "gaugewell is installed here: remove it first"
  export DEBIAN_FRONTEND=noninteractive
  installed=yes
  install() { apt-get install -y -q --no-install-recommends --reinstall "${1:-$deb}" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "install"; }; }
  prefix=/usr
else
  install() { dpkg -x "$deb" "$work/root"; }
  prefix=$work/root/usr
fi
install
check_desktop "$prefix"
check_home "$prefix/bin/gaugewell" install
if [ -n "$installed" ]; then
  dpkg --purge gaugewell >/dev/null
  make_last_version
  check_upgrade
  dpkg --purge gaugewell >/dev/null
  installed=""
  for path in /usr/bin/gaugewell /usr/lib/gaugewell /usr/share/gaugewell; do
    [ ! -e "$path" ] || fail "left behind: $path"
  done
fi
[ -s "$HOME/Gaugewell/Tallywell.mdb" ] || fail "removing has removed the user's data"
echo "Both packages work."
