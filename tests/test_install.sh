#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# test_install.sh BUILD: installing over a used home loses nothing, and a fresh home is whole.
set -euo pipefail
build=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
install() { cmake --install "$build" --prefix "$home" >/dev/null; }
fail() { echo "$1" >&2; exit 1; }

install
for file in gaugewell Tallywell.mdb "GWL HELP 2.1.HLP" gettingstarted.pps actionplan.rpt log.rpt rptrating.rpt \
  satisfaction.rpt satisfactionindex.rpt scatter.rpt surveyresponse.rpt template.xls; do
  [ -s "$home/$file" ] || fail "missing in a fresh home: $file"
done
echo "the user's data" >>"$home/Tallywell.mdb"
echo "Larkmoor" >"$home/company.txt"
echo "own" >"$home/template.xls"
echo "<!-- own -->" >>"$home/log.rpt"
before=$(cat "$home/Tallywell.mdb" "$home/company.txt" "$home/template.xls" "$home/log.rpt" | sha256sum)
echo "stale" >"$home/GWL HELP 2.1.HLP"
echo "stale" >"$home/gettingstarted.pps"
install
after=$(cat "$home/Tallywell.mdb" "$home/company.txt" "$home/template.xls" "$home/log.rpt" | sha256sum)
[ "$before" = "$after" ] || fail "installing has replaced the user's files"
cmp -s "$home/scatter.rpt" "$(dirname "$0")/../home/scatter.rpt" || fail "an unchanged layout is not the program's"
for file in "GWL HELP 2.1.HLP" gettingstarted.pps; do
  cmp -s "$home/$file" "$(dirname "$0")/../home/$file" || fail "installing has kept stale help: $file"
done
