// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/windowstate.h"

#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QStyle>
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
    window.restoreGeometry(
        windows.value(keyOf(window)).toByteArray()); // refuses that of a very different screen
    keepOnScreen(window);
}

void keepOnScreen(QWidget& window) {
    if (window.isMaximized() || window.isFullScreen())
        return;
    QRect within = window.screen()->availableGeometry();
    within.setTop(within.top() + window.style()->pixelMetric(QStyle::PM_TitleBarHeight));
    QRect kept(window.geometry().topLeft(), window.size().boundedTo(within.size()));
    kept.moveLeft(qBound(within.left(), kept.left(), within.right() + 1 - kept.width()));
    kept.moveTop(qBound(within.top(), kept.top(), within.bottom() + 1 - kept.height()));
    if (window.testAttribute(Qt::WA_Moved))
        window.setGeometry(kept);
    else
        window.resize(kept.size()); // the desktop chooses its place
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
