// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAbstractItemView;
class QModelIndex;
class QWidget;

namespace forms {

/// Tells a screen reader what Qt does not: grids, lists, trees and the text in a combo box get the names of
/// their labels, the buttons that Qt puts into text boxes and bars ones of their own, and a tick that the
/// user sets or takes away is read out.
void nameForReader(QWidget& window);

/// The editor of a cell is called after the column, and described by the first cell of the row.
void nameEditor(QWidget& editor, const QAbstractItemView& view, const QModelIndex& cell);

} // namespace forms
