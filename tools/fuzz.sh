#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# fuzz.sh RUNS: runs each of the readers of workbooks, that of .xls files and that of files that are zip files, on mutations
# of the example files under the sanitizers. Crashing inputs are left in build/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DGAUGEWELL_FUZZ=ON -DBUILD_TESTING=OFF >/dev/null
cmake --build build/fuzz --target workbookfuzzer packagefuzzer >/dev/null
for target in workbook:xls package:packages; do
  grown=build/fuzz/grown-${target%:*}
  mkdir -p "$grown"
  build/fuzz/fuzz/"${target%:*}"fuzzer -runs="$1" -seed=1 -max_len=65536 -timeout=20 -verbosity=0 -print_final_stats=1 \
    -artifact_prefix=build/fuzz/ "$grown" tests/data/"${target#*:}"
done
