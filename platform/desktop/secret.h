// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace desktop {

/// What a password belongs to.
struct SecretKey {
    QString server;
    QString database;
    QString user;
};

/// The password that the desktop's secret service keeps; none without such a service, or when the user does
/// not unlock it.
extern std::function<std::optional<QString>(const SecretKey&)> findSecretHook;
/// Lets the service keep a password, shown in its list under that label. False when it does not.
extern std::function<bool(const SecretKey&, const QString& label, const QString& password)> keepSecretHook;
/// Lets the service forget it.
extern std::function<void(const SecretKey&)> forgetSecretHook;

} // namespace desktop
