#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# demo.sh BUILD HOME: creates the demonstration in a new home: store, survey files, name of the organisation.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1 home=$2

[ ! -e "$home/Tallywell.mdb" ] || { echo "demo.sh: $home has a database already" >&2; exit 1; }
mkdir -p "$home"
script=$(mktemp)
trap 'rm -f "$script"' EXIT
"$build/tools/makedemo" >"$script"
"$build/tools/makestore" "$home/Tallywell.mdb" kvtwpa home/schema.sql home/version2.sql home/queries.sql "$script"
cmake --install "$build" --prefix "$home" >/dev/null
echo "Larkmoor Quality Services" >"$home/company.txt"
"$build/tools/demofiles" "$home"
