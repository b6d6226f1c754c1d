// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/matrixgroups.h"

#include "analysis/figures/ratings.h"
#include "core/store/store.h"
#include "platform/ado/forwardrows.h"

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
    ado::ForwardRows answers(u"select parametername, weightage, score from scatter where custname='"_s +
                                 customer + u"' and sdate=#" + toSqlDate(date) + u"#",
                             *cnnMain, ado::ForwardRows::Expected::Few);
    std::vector<MatrixGroup> groups;
    while (answers.next())
        groupOf(groups, answers.text(0))
            .answers.push_back({toRating(answers.value(1)), toRating(answers.value(2))});
    return groups;
}
