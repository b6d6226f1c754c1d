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
    // Outside the handler: a hook that shows a message runs an event loop of its own.
    if (uncaughtHook)
        uncaughtHook(uncaught);
    return true;
}

} // namespace desktop
