// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/reminding.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "exchange/files/homefile.h"
#include "exchange/mailer.h"

using namespace Qt::StringLiterals;

namespace {

/// The registered names of survey files by respondent and survey date, the last one of several.
using FileNames = std::map<std::pair<int, QDate>, QString>;

FileNames registeredFiles(const std::vector<Response>& responses) {
    QStringList respondents;
    for (const Response& response : responses)
        respondents << QString::number(response.respondentid);
    respondents.removeDuplicates();
    FileNames names;
    ado::Recordset log(
        u"select * from log where respid in ("_s + respondents.join(u", "_s) + u") order by rowid", *cnnMain);
    for (; !log.Eof(); log.MoveNext())
        names[{log["respid"].Value().toInt(), log["sdate"].Value().toDate()}] = log["xlsfilename"].Text();
    return names;
}

/// Empty for a respondent who can be reminded.
QString reasonAgainst(const Response& response, const QString& fileName, const ResponseSettings& settings) {
    if (response.isAnswered())
        return u"has answered"_s;
    if (response.dispatchid == 0)
        return u"has not been handed a survey file"_s;
    if (!response.due.isValid() && QString(settings.subject + settings.text).contains(u"{due}"))
        return u"has no due date"_s;
    if (fileName.isEmpty())
        return u"the register has no survey file"_s;
    return toCheckFileExists(fileName) ? QString() : u"the file %1 is missing"_s.arg(fileName);
}

void compose(Mailer& mailer, const Response& response, const QString& fileName,
             const ResponseSettings& settings) {
    const std::map<QString, QString> values{{u"respondent"_s, response.respondent},
                                            {u"customer"_s, response.customer},
                                            {u"survey date"_s, ado::toText(response.surveyDate)},
                                            {u"due"_s, ado::toText(response.due)},
                                            {u"company"_s, strCompanyName}};
    mailer.beginMail();
    mailer.MAPIMessages1.MsgSubject = filledIn(settings.subject, values);
    mailer.MAPIMessages1.MsgNoteText = filledIn(settings.text, values);
    mailer.attach(fileName, surveyFilePath(fileName));
    mailer.setRecipient(response.email.isEmpty() ? u"No email address found"_s : response.email);
    mailer.handOver();
    mailer.signOff();
}

class Run {
public:
    Run(forms::Form& form, const ResponseSettings& used) : shown(form), settings(used) {}

    Reminded over(const std::vector<Response>& responses) {
        const FileNames names = registeredFiles(responses);
        std::vector<std::pair<Response, QString>> wanted;
        for (const Response& response : responses) {
            const auto name = names.find({response.respondentid, response.surveyDate});
            const QString fileName = name == names.end() ? QString() : name->second;
            const QString reason = reasonAgainst(response, fileName, settings);
            if (reason.isEmpty())
                wanted.emplace_back(response, fileName);
            else
                leaveOut(response, reason);
        }
        if (!wanted.empty() && mailer.toTestMailKey())
            mailAll(wanted);
        return done;
    }

private:
    void leaveOut(const Response& response, const QString& reason) {
        done.leftOut << response.name() + u": "_s + reason;
    }

    void mailAll(const std::vector<std::pair<Response, QString>>& wanted) {
        const Busy busy(shown, u"Composing Reminders......"_s);
        Progress progress(shown, int(wanted.size()));
        bool isEnded = false;
        for (const auto& [response, fileName] : wanted) {
            isEnded = isEnded || !progress.step(response.name());
            if (isEnded)
                leaveOut(response, u"not mailed"_s);
            else
                isEnded = !mail(response, fileName);
        }
    }

    bool mail(const Response& response, const QString& fileName) {
        try {
            compose(mailer, response, fileName, settings);
            done.dispatchids.push_back(response.dispatchid);
            return true;
        } catch (const Failure& failure) {
            leaveOut(response, failure.text());
            return false;
        }
    }

    forms::Form& shown;
    const ResponseSettings& settings;
    Mailer mailer;
    Reminded done;
};

} // namespace

Reminded remind(forms::Form& form, const std::vector<Response>& responses, const ResponseSettings& settings) {
    return lookedUp([&] { return Run(form, settings).over(responses); });
}
