// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/statements/keywords.h"

#include "platform/failure/failure.h"

using namespace Qt::StringLiterals;

namespace {

QString clauseOf(SearchPass pass, const QString& keyword) {
    switch (pass) {
    case SearchPass::Objective:
        return u" question like '%"_s + keyword + u"%'";
    case SearchPass::Descriptive:
        return u" question like '%"_s + keyword + u"%' or description like '%" + keyword + u"%'";
    case SearchPass::Action:
        return u" action like '%"_s + keyword + u"%'";
    }
    return {};
}

QString beginningOf(SearchPass pass) {
    switch (pass) {
    case SearchPass::Objective:
        return u"select * from objquery where"_s;
    case SearchPass::Descriptive:
        return u"select * from descquery where"_s;
    case SearchPass::Action:
        return u"select * from action where"_s;
    }
    return {};
}

/// The source columns of a hit, in the order of the work table's fields.
QString fieldsOf(SearchPass pass) {
    switch (pass) {
    case SearchPass::Objective:
        return u"surveydate, question, feedbackobjid, custname, 'Survey (Objective)'"_s;
    case SearchPass::Descriptive:
        return u"surveydate, question, feedbackdescid, custname, 'Survey (Descriptive)'"_s;
    case SearchPass::Action:
        return u"[Date], [Action], actionid, custname, 'Improvement Plan'"_s;
    }
    return {};
}

} // namespace

QStringList keywordsOf(const QString& text) {
    QStringList keywords = text.split(u' ');
    if (keywords.size() > mostKeywords)
        throw Failure::ofSubscript();
    return keywords;
}

QString searchSql(SearchPass pass, const QStringList& keywords) {
    QStringList clauses;
    for (const QString& keyword : keywords)
        clauses << clauseOf(pass, keyword);
    return beginningOf(pass) + u"(" + clauses.join(u" or ") + u")";
}

QString hitInsertion(SearchPass pass, const QStringList& keywords) {
    return u"insert into search (sdate, [Desc], Id, custname, tablename) select "_s + fieldsOf(pass) +
           u" from (" + searchSql(pass, keywords) + u") as hits";
}
