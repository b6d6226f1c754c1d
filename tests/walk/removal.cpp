// SPDX-License-Identifier: GPL-3.0-or-later
// What the erasure of a person and a clean-up may change.
#include "tests/walk/oracle.h"

namespace walk {
/// Rows of the person change or go; of others only texts of the same customer that name the person.
QString Oracle::faultOfErasure(const QString& table, const QStringList& row, const Rows& now) const {
    const std::map<QString, int> respondentFields{{u"respondent"_s, 0},  {u"responquesindex"_s, 0},
                                                  {u"segment"_s, 1},     {u"feedbackobjective"_s, 1},
                                                  {u"log"_s, 2},         {u"dispatch"_s, 2},
                                                  {u"readingfile"_s, 4}, {u"feedbackdescriptive"_s, 1}};
    const auto field = respondentFields.find(table);
    if (field == respondentFields.end())
        return {};
    const QString respondent = row[field->second];
    const auto other = now.find(u"respondent|"_s + respondent);
    const bool mayBeNamed = (table == u"feedbackdescriptive" || table == u"readingfile") &&
                            other != now.end() && owner.customers.contains(other->second[1]);
    return owner.respondents.contains(respondent) || mayBeNamed
               ? QString()
               : u"an erasure has changed another person's "_s + table;
}

/// A respondent and a customer that are stored lose nothing.
QString Oracle::faultOfCleanUp(const QString& table, const QStringList& row) const {
    const auto isStored = [this](const QString& owners, const QString& id) {
        return rows.contains(owners + u'|' + id);
    };
    const bool isKept =
        (table.startsWith(u"feedback") && isStored(u"respondent"_s, row[1]) &&
         isStored(u"questions"_s, row[2])) ||
        (table == u"readingfile" && isStored(u"respondent"_s, row[4])) ||
        (table == u"actionplan" && isStored(u"customer"_s, row[1])) ||
        (table == u"dispatch" && isStored(u"respondent"_s, row[2]) && isStored(u"survey"_s, row[3]));
    return isKept ? u"a clean-up has removed what is seen: "_s + table : QString();
}
} // namespace walk
