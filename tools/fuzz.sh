#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# fuzz.sh RUNS: that many mutated workbooks, grown from the example files, through the workbook reader under the
# sanitizers. A file that breaks it is left in build/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DGAUGEWELL_FUZZ=ON -DBUILD_TESTING=OFF >/dev/null
cmake --build build/fuzz --target workbook_fuzzer >/dev/null
mkdir -p build/fuzz/grown
build/fuzz/fuzz/workbook_fuzzer -runs="$1" -seed=1 -max_len=65536 -timeout=20 -verbosity=0 -print_final_stats=1 \
  -artifact_prefix=build/fuzz/ build/fuzz/grown tests/data/xls
