// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace desktop {

/// Gives a window the size, position and maximised state that it was last remembered with, moved into sight
/// where the screens are others now. A window that never was remembered stays as it is.
void restoreWindow(QWidget& window);

/// Remembers them under the window's object name in an ini file in the user's configuration folder. A file
/// that cannot be written is no error: the window starts as it did before.
void rememberWindow(const QWidget& window);

} // namespace desktop
