// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <map>

/// What all users of the store have set for responses, and the defaults of what nobody has set.
struct ResponseSettings {
    int days = 14;  ///< from handing over to the due date, 1 to 365
    int target = 0; ///< per cent of those asked who should answer, 1 to 100; 0: no target
    QString subject = defaultSubject();
    QString text = defaultText();

    static QString defaultSubject();
    static QString defaultText();
};

/// The names of the settings in table programsetting.
namespace responsesetting {
inline constexpr QStringView days = u"ResponseDays";
inline constexpr QStringView target = u"ResponseTarget";
inline constexpr QStringView subject = u"ReminderSubject";
inline constexpr QStringView text = u"ReminderText";
} // namespace responsesetting

/// By one select; the defaults in a database of version 1. Throws Failure.
ResponseSettings readResponseSettings();

/// The fields that subject and text of a reminder may have, without their braces.
QStringList reminderFields();

/// Replaces each {field} by its value. Other texts in braces stay as they are.
QString filledIn(const QString& text, const std::map<QString, QString>& values);
