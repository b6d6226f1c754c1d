// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <exception>
#include <functional>

namespace desktop {

/// The application of the program: an exception that leaves an event handler ends that event only.
class Application : public QApplication {
public:
    Application(int& argc, char** argv) : QApplication(argc, argv) {}

    bool notify(QObject* receiver, QEvent* event) override;
};

/// Called with each exception that leaves an event handler, in any event loop. An exception that the hook
/// throws goes on to the caller that delivered the event, such as a procedure that shows a window; without
/// such a caller it must not throw. Without a hook the exception is logged only.
extern std::function<void(const std::exception_ptr&)> uncaughtHook;

} // namespace desktop
