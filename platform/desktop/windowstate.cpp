// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/windowstate.h"

#include <QSettings>
#include <QStandardPaths>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace desktop {
namespace {

QString windowsFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/gaugewell/windows.ini";
}

QString keyOf(const QWidget& window) {
    return window.objectName() + u"/geometry";
}

} // namespace

void restoreWindow(QWidget& window) {
    const QSettings windows(windowsFile(), QSettings::IniFormat);
    window.restoreGeometry(windows.value(keyOf(window)).toByteArray());
}

void rememberWindow(const QWidget& window) {
    QSettings windows(windowsFile(), QSettings::IniFormat);
    windows.setValue(keyOf(window), window.saveGeometry());
}

bool isSwitchedOn(const char* name) {
    return QSettings(windowsFile(), QSettings::IniFormat).value(QLatin1StringView(name)).toBool();
}

void rememberSwitch(const char* name, bool isOn) {
    QSettings(windowsFile(), QSettings::IniFormat).setValue(QLatin1StringView(name), isOn);
}

QString rememberedChoice(const char* name) {
    return QSettings(windowsFile(), QSettings::IniFormat).value(QLatin1StringView(name)).toString();
}

void rememberChoice(const char* name, const QString& choice) {
    QSettings(windowsFile(), QSettings::IniFormat).setValue(QLatin1StringView(name), choice);
}

} // namespace desktop
