// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"

#include <QDate>

namespace ado {
class Recordset;
}

inline const QString descriptionField = QStringLiteral("Improvement Details");
inline const QString targetField = QStringLiteral("Target Date");
inline const QString statusField = QStringLiteral("Status");

/// The texts of an action as the form shows them.
struct PlannedAction {
    QString description;
    QString target; ///< dd/mm/yyyy
    QString status; ///< statusWord

    /// The stored action of a record of table actionplan or saved query action.
    static PlannedAction of(ado::Recordset& record);
    bool operator==(const PlannedAction&) const = default;
};

QString statusWord(bool isComplete);

/// An action without a target date is shown with today's, so that the previous action's date does not stay
/// visible.
QDate dateOrToday(const QDate& date);

/// The first day from today on without an action of the customer. Throws Failure.
QDate firstDayWithoutAction(int custid);

/// The action in the boxes as it was read for one customer and plan date; without texts if there was none.
struct ReadAction {
    int custid = 0;
    QDate date;
    PlannedAction texts;

    bool isOf(int customer, const QDate& planDate) const { return custid == customer && date == planDate; }
    /// The fields that the user and someone else have changed since.
    ChangedRow changedMeanwhile(const PlannedAction& stored, const PlannedAction& mine) const;
    /// Whether only someone else has changed that text.
    bool isOthers(QString PlannedAction::*text, const PlannedAction& stored,
                  const PlannedAction& mine) const {
        return mine.*text == texts.*text && stored.*text != texts.*text;
    }
};
