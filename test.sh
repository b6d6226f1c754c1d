#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the packages needed, builds Gaugewell with its tests and runs them. GAUGEWELL_PRESET selects the preset: dev
# (default), release or asan.
set -euo pipefail
cd "$(dirname "$0")"

preset=${GAUGEWELL_PRESET:-dev}

tools/packages.sh build tests
echo "Building ($preset)..."
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
echo "Testing..."
ctest --preset "$preset"
