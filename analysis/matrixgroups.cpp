// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/matrixgroups.h"

#include "analysis/figures/ratings.h"
#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

MatrixGroup& groupOf(std::vector<MatrixGroup>& groups, const QString& parameter) {
    for (MatrixGroup& group : groups) {
        if (group.parameter.compare(parameter, Qt::CaseInsensitive) == 0)
            return group;
    }
    return groups.emplace_back(MatrixGroup{parameter, {}});
}

} // namespace

std::vector<MatrixGroup> readMatrixGroups(const QString& customer, const QDate& date) {
    ado::Recordset answers(u"select * from scatter where custname='"_s + customer + u"' and sdate=#" +
                               toSqlDate(date) + u"# ",
                           *cnnMain);
    const ado::Field parametername = answers["parametername"];
    const ado::Field weightage = answers["weightage"];
    const ado::Field score = answers["score"];
    std::vector<MatrixGroup> groups;
    for (; !answers.Eof(); answers.MoveNext())
        groupOf(groups, parametername.Text()).answers.push_back({toRating(weightage), toRating(score)});
    return groups;
}
