#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# pictures.sh BUILD: makes the pictures in README.md from the demonstration. Needs LibreOffice and pdftoppm.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

tools/demo.sh "$build" "$folder/home"
QT_QPA_PLATFORM=offscreen "$build/tools/grab" "$folder/home" "$folder/grabbed"
outstanding=$(python3 - "$folder/home/Tallywell.mdb" <<'SCRIPT'
import sqlite3, sys
log = sqlite3.connect(sys.argv[1]).execute("select xlsfilename from log where Status = 0 order by rowid")
print(log.fetchone()[0])
SCRIPT
)
soffice --headless --convert-to pdf --outdir "$folder" "$folder/home/$outstanding" >/dev/null
pdftoppm -r 80 -f 1 -l 1 -singlefile -png "$folder/${outstanding%.xls}.pdf" "$folder/survey-file"

mkdir -p docs/pictures
cp "$folder/grabbed/frmSatisfactionIndex-chart.png" docs/pictures/main-index.png
cp "$folder/grabbed/frmPerformanceMatrix-chart.png" docs/pictures/main-matrix.png
cp "$folder/survey-file.png" docs/pictures/survey-file.png
