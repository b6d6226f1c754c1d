#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is needed, builds Gaugewell with its tests and runs them all.
set -euo pipefail
cd "$(dirname "$0")"

tools/packages.sh build tests
echo "Building..."
cmake --preset dev >/dev/null
cmake --build --preset dev
echo "Testing..."
ctest --preset dev
