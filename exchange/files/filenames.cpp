// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/filenames.h"

#include "core/store/store.h"
#include "exchange/files/homefile.h"
#include "survey/questionnaires/questionnaire.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

bool isSameTitle(const QString& one, const QString& other) {
    return toStoredText(one.trimmed()) == toStoredText(other.trimmed());
}

QStringList titlesHandedOut(const QString& title) {
    const QString trimmed = title.trimmed();
    for (const QStringView suffix : {u".xlsx", u".xlsm", u".ods"}) {
        if (trimmed.endsWith(suffix, Qt::CaseInsensitive)) {
            const QString base = trimmed.chopped(suffix.size());
            return {base + u".xls", base};
        }
    }
    return {};
}

bool isReturnOf(const QString& title, const QString& registered) {
    const QStringList others = titlesHandedOut(title);
    return isSameTitle(title, registered) ||
           std::any_of(others.begin(), others.end(),
                       [&](const QString& other) { return isSameTitle(other, registered); });
}

QString findRegisteredTitle(const QString& title) {
    const QStringList others = titlesHandedOut(title);
    if (others.isEmpty() || isFileNameLogged(title))
        return title;
    const auto found = std::find_if(others.begin(), others.end(), isFileNameLogged);
    return found != others.end() ? *found : title;
}

QString conditionOfTitle(const QString& fileName) {
    const QString stored = toStoredText(fileName);
    const QString plain = QString(stored).replace(u'\u2019', u"''"_s);
    if (plain == stored)
        return u"xlsfilename='"_s + stored + u'\'';
    return u"xlsfilename in ('"_s + stored + u"', '" + plain + u"')";
}

QString findLoggedFileName(const QString& customer, const SurveyKey& survey) {
    if (survey.respondentid == 0)
        return {};
    ado::Recordset log(u"select * from log where custname='"_s + customer + u"' and respid=" +
                           QString::number(survey.respondentid) + u" and sdate=#" + toSqlDate(survey.date) +
                           u"#",
                       *cnnMain);
    return log.Eof() ? QString() : log["xlsfilename"].Text();
}

QString makeSystemFileName(const SurveyKey& survey) {
    if (survey.respondentid == 0)
        return {};
    ado::Recordset responquery(u"select * from responquery where custid="_s + QString::number(survey.custid) +
                                   u" and respondentid=" + QString::number(survey.respondentid) +
                                   u" and sdate=#" + toSqlDate(survey.date) + u"#" + orderOfQuestions(),
                               *cnnMain);
    if (responquery.Eof())
        return {};
    const QString keys =
        responquery["surveyid"].Text() + responquery["custid"].Text() + responquery["respondentid"].Text();
    return keys.trimmed() + u".xls";
}

bool isFileNameLogged(const QString& fileName) {
    ado::Recordset log(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain);
    return !log.Eof();
}

bool isProgramsOwnFile(const QString& fileName) {
    constexpr QStringView ownSuffixes[] = {u".mdb", u".mdb-journal", u".rpt", u".hlp", u".bmp", u".pps"};
    const auto is = [&](QStringView name) { return fileName.compare(name, Qt::CaseInsensitive) == 0; };
    return is(templateFile) || is(u"company.txt") || is(QFileInfo(strDatabasePath).fileName()) ||
           std::any_of(std::begin(ownSuffixes), std::end(ownSuffixes),
                       [&](QStringView suffix) { return fileName.endsWith(suffix, Qt::CaseInsensitive); }) ||
           (!fileName.endsWith(u".xls", Qt::CaseInsensitive) && toCheckFileExists(fileName));
}
