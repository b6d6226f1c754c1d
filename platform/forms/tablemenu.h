// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

#include <functional>

class QAbstractScrollArea;

namespace forms {

using TableSource = std::function<tables::Table()>;

/// Adds two actions to a widget: one that puts a table on the clipboard, and "Save Table...", which asks for
/// a file (.xlsx or .csv; another name gets .xlsx) and saves a table in it.
void addTableActions(QWidget& widget, const QString& copyText, const TableSource& copied,
                     const TableSource& saved);

/// Called with the path of each table that was saved. Does nothing at first.
extern std::function<void(const QString& path)> tableSavedHook;

/// Gives a scrolled widget a context menu with "Copy" (also Ctrl+C) and "Save Table...". Where a right click
/// opens a menu of the form already, there are only the actions: the form adds them to its menu.
void addTableMenu(QAbstractScrollArea& area, const TableSource& copied, const TableSource& saved);

/// Gives this menu to all grids, lists and trees of a window.
void addTableMenus(QWidget& window);

} // namespace forms
