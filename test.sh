#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is needed, builds Gaugewell with its tests and runs them all. GAUGEWELL_PRESET names another preset than
# dev: release, asan.
set -euo pipefail
cd "$(dirname "$0")"

preset=${GAUGEWELL_PRESET:-dev}

tools/packages.sh build tests
echo "Building ($preset)..."
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
echo "Testing..."
ctest --preset "$preset"
