#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# test_install.sh BUILD: a fresh home is complete, and installing over a used home keeps the user's files.
set -euo pipefail
build=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
install() { cmake --install "$build" --prefix "$home" >/dev/null; }
fail() { echo "$1" >&2; exit 1; }

install
for file in gaugewell Tallywell.mdb "GWL HELP 2.1.HLP" gettingstarted.pps slides/index.png actionplan.rpt groupindex.rpt groupmatrix.rpt indextargets.rpt log.rpt matrixgaps.rpt rptrating.rpt \
  satisfaction.rpt satisfactionindex.rpt scatter.rpt surveyresponse.rpt template.xls; do
  [ -s "$home/$file" ] || fail "missing in a fresh home: $file"
done
echo "the user's data" >>"$home/Tallywell.mdb"
echo "Larkmoor" >"$home/company.txt"
echo "own" >"$home/template.xls"
echo "<!-- own -->" >>"$home/log.rpt"
echo "of an older program" >"$home/rptrating.rpt"
echo "$(sha256sum <"$home/rptrating.rpt" | cut -c 1-64) rptrating.rpt" >>"$home/installed.txt"
before=$(cat "$home/Tallywell.mdb" "$home/company.txt" "$home/template.xls" "$home/log.rpt" | sha256sum)
echo "stale" >"$home/GWL HELP 2.1.HLP"
echo "stale" >"$home/gettingstarted.pps"
install
after=$(cat "$home/Tallywell.mdb" "$home/company.txt" "$home/template.xls" "$home/log.rpt" | sha256sum)
[ "$before" = "$after" ] || fail "installing has replaced the user's files"
for file in scatter.rpt rptrating.rpt "GWL HELP 2.1.HLP" gettingstarted.pps; do
  cmp -s "$home/$file" "$(dirname "$0")/../home/$file" || fail "installing has kept a stale $file"
done

# One program per home: a second start ends and the first continues; the lock of a killed program is ignored.
used=$home
home=$used/second
install
export GAUGEWELL_HOME=$home XDG_CONFIG_HOME=$used/config QT_QPA_PLATFORM=offscreen
for round in first "after a kill"; do
  "$home/gaugewell" 2>/dev/null &
  first=$!
  for _ in $(seq 100); do
    [ "$(head -n 1 "$home/gaugewell.lock" 2>/dev/null)" = "$first" ] && break
    sleep 0.1
  done
  timeout 30 "$home/gaugewell" 2>/dev/null || fail "the second start has not ended ($round)"
  kill -9 "$first" 2>/dev/null || fail "the first program has ended ($round)"
  status=0
  wait "$first" 2>/dev/null || status=$?
  [ "$status" -eq 137 ] || fail "the first program has ended by itself with $status ($round)" # 137: killed
done
[ "$(stat -c %a "$home/Tallywell.mdb")" = 600 ] || fail "the store can be read by others"
