// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

namespace desktop {

/// Restores a window's last remembered size, position and maximized state, kept on the present screens. A
/// window that was never remembered keeps its own size and place as far as they fit.
void restoreWindow(QWidget& window);

/// Shrinks and moves a window until it is on its screen with its title bar.
void keepOnScreen(QWidget& window);

/// Stores them under the window's object name in an ini file in the user's configuration folder. A file that
/// cannot be written is not an error.
void rememberWindow(const QWidget& window);

/// A switch of a form that is on or off at its next opening as it was left, such as "frmX/chkY"; off at
/// first. They stand in the same file.
bool isSwitchedOn(const char* name);
void rememberSwitch(const char* name, bool isOn);

/// A choice of a form as a text that is its own, empty at first; otherwise like a switch.
QString rememberedChoice(const char* name);
void rememberChoice(const char* name, const QString& choice);

} // namespace desktop
