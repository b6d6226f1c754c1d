// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/application.h"

namespace desktop {

std::function<void(const std::exception_ptr&)> uncaughtHook;

bool Application::notify(QObject* receiver, QEvent* event) {
    std::exception_ptr uncaught;
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        qWarning("%s", failure.what());
        uncaught = std::current_exception();
    }
    // Outside the catch block: a hook that shows a message runs a nested event loop.
    if (uncaughtHook)
        uncaughtHook(uncaught);
    return true;
}

} // namespace desktop
