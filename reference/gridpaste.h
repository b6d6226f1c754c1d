// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <vector>

/// Splits a clipboard text into cells as spreadsheet programs copy them: one row a line, cells separated by
/// tabs. A cell in double quotes may contain line breaks, tabs and doubled quotes. A line break at the end
/// starts no row. An empty text returns one empty cell.
std::vector<QStringList> cellsOfBlock(const QString& text);

/// Replaces each run of line breaks, tabs and other control characters by one blank.
QString withoutControlCharacters(const QString& text);
