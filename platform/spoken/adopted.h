// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QAccessibleEvent;
class QAccessibleInterface;
class QWidget;

namespace spoken {

/// Whether a program such as a screen reader asks for events.
extern std::function<bool()> isReadHook;
/// Passes an event on to it.
extern std::function<void(QAccessibleEvent&)> eventHook;

/// Makes the interface by which a screen reader reads a widget.
using Maker = std::function<QAccessibleInterface*(QWidget&)>;

/// A widget gets an interface of its own in place of the one of its class, until it is destroyed.
void adopt(QWidget& widget, Maker maker);

} // namespace spoken
