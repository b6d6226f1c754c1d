#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# fuzz.sh RUNS: runs the workbook reader on mutations of the example files under the sanitizers. Crashing inputs are left
# in build/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DGAUGEWELL_FUZZ=ON -DBUILD_TESTING=OFF >/dev/null
cmake --build build/fuzz --target workbookfuzzer >/dev/null
mkdir -p build/fuzz/grown
build/fuzz/fuzz/workbookfuzzer -runs="$1" -seed=1 -max_len=65536 -timeout=20 -verbosity=0 -print_final_stats=1 \
  -artifact_prefix=build/fuzz/ build/fuzz/grown tests/data/xls
