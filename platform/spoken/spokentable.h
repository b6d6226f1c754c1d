// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

#include <functional>

class QWidget;

namespace spoken {

/// A widget that only paints is read by a screen reader as a table: its headings, and its rows, whose first
/// texts head them. Numbers have up to 7 digits. The table is taken when it is asked for, and kept.
void readAsTable(QWidget& widget, const std::function<tables::Table()>& source);

/// The widget shows another table from now on.
void tableChanged(QWidget& widget);

/// The user has come to a row of the table, from 0, with the keyboard; -1: to none. Its first value is read
/// out, with the description of the widget.
void comeToRow(QWidget& widget, int row);

} // namespace spoken
