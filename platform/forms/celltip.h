// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAbstractItemView;
class QHelpEvent;

namespace forms {

/// Shows the whole text of the cell under the mouse as a tool tip when the cell cuts it off.
void showCutText(QAbstractItemView& view, const QHelpEvent& event);

} // namespace forms
