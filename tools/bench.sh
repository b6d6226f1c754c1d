#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the benchmarks in release and runs them one after the other, without a display. Nothing else should run meanwhile.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/packages.sh build tests peers
cmake --preset release -DGAUGEWELL_BENCH=ON >/dev/null
benches=(bench_index bench_segments bench_search bench_reading bench_start bench_surveyexport bench_answerexport bench_responses
  bench_forms bench_upkeep bench_server crowd)
cmake --build --preset release --target "${benches[@]}"
export QT_QPA_PLATFORM=offscreen:configfile=$PWD/tests/data/screen.json
for name in index segments search reading start answerexport responses; do
  echo "== $name =="
  "build/release/bench/bench_$name"
done
echo "== every form, 10 million answers =="
store=$(mktemp -d)
trap 'rm -rf "$store"' EXIT
build/release/bench/bench_forms "$store" || true # says what is missed
echo "== a person, cleaning up and copies, 10 million answers =="
build/release/bench/bench_upkeep "$store"
echo "== a file beside a server =="
build/release/bench/bench_server
echo "== ten programs at once, for a minute each =="
build/release/tests/crowd
echo "== export =="
folder=$(mktemp -d)
trap 'rm -rf "$folder" "$store"' EXIT
build/release/bench/bench_surveyexport home/template.xls "$folder/survey.xls"
/usr/bin/python3 bench/exportpeers.py home/template.xls "$folder/survey.xls"
