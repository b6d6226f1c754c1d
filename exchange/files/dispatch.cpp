// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/dispatch.h"

#include "core/store/store.h"
#include "core/store/transaction.h"
#include "exchange/files/filenames.h"
#include "exchange/files/responsesettings.h"
#include "platform/ado/session.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

bool hasDispatchTables() {
    return cnnMain->session()->isTable(u"dispatch"_s);
}

void noteHandOver(const SurveyContext& survey, const QString& fileName, const QDate& today) {
    const QDate date = toDate(survey.date);
    if (!date.isValid() || !hasDispatchTables())
        return;
    const int days = readResponseSettings().days;
    Transaction transaction;
    // A respondent's name in the register is that of the export; the keys last. Old rows have no surveyid.
    ado::Recordset registered(u"select respondent.custid, respid, survey.surveyid from log "
                              "join respondent on respondent.respondentid=log.respid "
                              "join survey on survey.custid=respondent.custid and survey.sdate=log.sdate "
                              "and (log.surveyid is null or survey.surveyid=log.surveyid) where "_s +
                                  conditionOfTitle(fileName) + u" and log.custname='" +
                                  toStoredText(survey.customer) + u"' and respname='" +
                                  toStoredText(survey.respondent) + u"' and log.sdate=#" + toSqlDate(date) +
                                  u"#",
                              *cnnMain);
    if (registered.Eof())
        return;
    ado::Recordset dispatch(u"select * from dispatch where surveyid="_s + registered["surveyid"].Text() +
                                u" and respondentid=" + registered["respid"].Text(),
                            *cnnMain, Lock::Optimistic);
    if (dispatch.Eof()) {
        dispatch.AddNew();
        dispatch["custid"] = registered["custid"].Value();
        dispatch["respondentid"] = registered["respid"].Value();
        dispatch["surveyid"] = registered["surveyid"].Value();
        dispatch["handedover"] = today;
        dispatch["due"] = today.addDays(days);
    }
    dispatch["filename"] = fileName;
    dispatch.Update();
    transaction.Commit();
}

void deleteDispatch(const QString& surveyid, const QString& respondentid) {
    if (!hasDispatchTables())
        return;
    const QString ofSurvey =
        u" from dispatch where surveyid="_s + surveyid + u" and respondentid=" + respondentid;
    cnnMain->Execute(u"delete * from reminder where dispatchid in (select dispatchid"_s + ofSurvey + u')');
    cnnMain->Execute(u"delete *"_s + ofSurvey);
}

void addReminders(const std::vector<int>& dispatchids, const QDate& day) {
    QStringList wanted;
    for (const int dispatchid : dispatchids)
        wanted << QString::number(dispatchid);
    Transaction transaction;
    ado::Recordset stored(
        u"select dispatchid from dispatch where dispatchid in ("_s + wanted.join(u", "_s) + u')', *cnnMain);
    std::vector<QVariant> found;
    for (; !stored.Eof(); stored.MoveNext())
        found.push_back(stored["dispatchid"].Value());
    ado::Recordset reminder(u"select * from reminder"_s, *cnnMain, Lock::BatchOptimistic);
    for (const QVariant& dispatchid : found) {
        reminder.AddNew();
        reminder["dispatchid"] = dispatchid;
        reminder["reminded"] = day;
        reminder.Update();
    }
    transaction.Commit();
}
