// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <vector>

/// The cells of a text from the clipboard: a row a line, tabs between the cells of a row, as spreadsheet
/// programs copy them. A cell within double quotes may hold line breaks, tabs and doubled quotes. The line
/// break at the end begins no row.
std::vector<QStringList> cellsOfBlock(const QString& text);

/// The text with each run of line breaks, tabs and other control characters as one blank.
QString withoutControlCharacters(const QString& text);
