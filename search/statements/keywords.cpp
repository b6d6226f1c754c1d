// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/statements/keywords.h"

#include "platform/failure/failure.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether the column contains any of the keywords.
QString containsAny(const QString& column, const QStringList& keywords) {
    QStringList clauses;
    for (const QString& keyword : keywords)
        clauses << column + u" like '%"_s + keyword + u"%'";
    return u'(' + clauses.join(u" or "_s) + u')';
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

/// Questions are looked through in the catalogue and not with each of their answers. Where the keywords are
/// not found, `exists` spares the way through all customers and their respondents, which hits are met on.
/// The plus keeps a file from seeking each answer to each question that is found: many take longer so.
QString searchSql(SearchPass pass, const QStringList& keywords) {
    const QString asked = u"questionid in (select questionid from questions where "_s +
                          containsAny(u"question"_s, keywords) + u')';
    const QString words = u'(' + asked + u" or " + containsAny(u"description"_s, keywords) + u')';
    switch (pass) {
    case SearchPass::Objective:
        return u"select * from objquery where exists (select 1 from questions where "_s +
               containsAny(u"question"_s, keywords) + u") and +" + asked;
    case SearchPass::Descriptive:
        return u"select * from descquery where exists (select 1 from feedbackdescriptive where "_s + words +
               u") and " + words;
    case SearchPass::Action:
        return u"select * from action where "_s + containsAny(u"action"_s, keywords);
    }
    return {};
}

QString hitInsertion(SearchPass pass, const QStringList& keywords) {
    return u"insert into search (sdate, [Desc], Id, custname, tablename) select "_s + fieldsOf(pass) +
           u" from (" + searchSql(pass, keywords) + u") as hits";
}
