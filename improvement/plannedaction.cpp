// SPDX-License-Identifier: GPL-3.0-or-later
#include "improvement/plannedaction.h"

#include "core/store/store.h"
#include "platform/forms/clock.h"

using namespace Qt::StringLiterals;

PlannedAction PlannedAction::of(ado::Recordset& record) {
    return {record["Action"].Text(),
            dateOrToday(record["targetdate"].Value().toDate()).toString(ado::dateTextFormat),
            statusWord(record["Status"].Value().toBool())};
}

QString statusWord(bool isComplete) {
    return isComplete ? u"Complete"_s : u"Not Complete"_s;
}

QDate dateOrToday(const QDate& date) {
    return date.isValid() ? date : forms::today();
}

ChangedRow ReadAction::changedMeanwhile(const PlannedAction& stored, const PlannedAction& mine) const {
    ChangedRow changed{u"Action of "_s + date.toString(ado::dateTextFormat), {}};
    addIfChanged(changed, {descriptionField, texts.description, stored.description, mine.description});
    addIfChanged(changed, {targetField, texts.target, stored.target, mine.target});
    addIfChanged(changed, {statusField, texts.status, stored.status, mine.status});
    return changed;
}

QDate firstDayWithoutAction(int custid) {
    ado::Recordset planned(u"select * from actionplan where customerid="_s + QString::number(custid) +
                               u" and date>=#" + toSqlDate(forms::today()) + u"# order by date",
                           *cnnMain);
    QDate free = forms::today();
    for (; !planned.Eof() && planned["Date"].Value().toDate() <= free; planned.MoveNext()) {
        if (planned["Date"].Value().toDate() == free)
            free = free.addDays(1);
    }
    return free;
}
