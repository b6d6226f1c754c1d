// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <exception>
#include <functional>

namespace desktop {

/// The application of the program: an exception that leaves an event handler ends that event and not the
/// program.
class Application : public QApplication {
public:
    Application(int& argc, char** argv) : QApplication(argc, argv) {}

    bool notify(QObject* receiver, QEvent* event) override;
};

/// Gets each exception that leaves an event handler, within whatever event loop that runs. What it throws
/// itself goes on to the caller that delivered the event, such as a procedure that shows a window; it must
/// throw nothing when there is none. Without a hook the exception is logged only.
extern std::function<void(const std::exception_ptr&)> uncaughtHook;

} // namespace desktop
