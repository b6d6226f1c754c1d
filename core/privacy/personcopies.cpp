// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/personcopies.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

bool holds(ado::Connection& copy, const Person& person, const QString& newName) {
    const QString ofPerson = u" where respondentid="_s + QString::number(person.respondentid);
    const auto has = [&](const QString& sql) { return !ado::Recordset(sql, copy).Eof(); };
    return has(u"select 1 from respondent"_s + ofPerson + u" and respondentname<>" + sqlText(newName)) ||
           has(u"select 1 from feedbackdescriptive"_s + ofPerson + u" and Description<>''") ||
           has(u"select 1 from log where "_s + registerCondition(person));
}

} // namespace

std::vector<PersonCopy> findPersonCopies(const Person& person, const QString& newName,
                                         const QStringList& paths) {
    std::vector<PersonCopy> found;
    for (const QString& path : paths) {
        try {
            ado::Connection copy;
            copy.OpenReadOnly(path, storePassword());
            if (holds(copy, person, newName))
                found.push_back({path, true});
        } catch (const Failure&) { // damaged, or of another password
            found.push_back({path, false});
        }
    }
    return found;
}
