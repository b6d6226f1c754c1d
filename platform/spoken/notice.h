// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace spoken {

/// Has a screen reader read out the text of a label, or the message of a status bar, wherever the focus is.
void announce(QWidget& widget);

} // namespace spoken
