// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/mailer.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/dispatch.h"
#include "exchange/files/homefile.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "platform/mapi/client.h"

using namespace Qt::StringLiterals;

bool Mailer::toTestMailKey() {
    strFound = mapi::hasClient();
    if (!strFound)
        forms::msgBox(u"Cannot send E-Mail....There is no Default Mail Client Installed on your PC..."_s,
                      forms::style::critical, titleWithVersion);
    return strFound;
}

QString Mailer::toGetStandardMessage(const QString& customerName) const {
    QString message;
    guarded([&] {
        ado::Recordset standard(u"select * from standardmessage where customerid="_s +
                                    QString::number(toGetCustID(customerName)),
                                *cnnMain);
        if (!standard.Eof())
            message = standard["standardmessage"].Text().trimmed();
    });
    return message;
}

QString Mailer::toGetEmailId(const QString& respondentName, int custid) const {
    QString address;
    guarded([&] {
        ado::Recordset respondent(u"select * from respondent where respondentname='"_s + respondentName +
                                      u"' and custid=" + QString::number(custid),
                                  *cnnMain);
        if (!respondent.Eof())
            address = respondent["emailid"].Text();
    });
    return address;
}

void Mailer::beginMail() {
    MAPISession1.setAction(mapi::SignOn);
    MAPIMessages1.SessionID = MAPISession1.SessionID;
    MAPIMessages1.setAction(mapi::Compose);
    MAPIMessages1.MsgSubject = u"Customer Satisfaction Survey"_s;
}

void Mailer::attach(const QString& name, const QString& path) {
    MAPIMessages1.AttachmentIndex = 0;
    MAPIMessages1.AttachmentType = mapi::DataAttachment;
    MAPIMessages1.AttachmentName = name;
    MAPIMessages1.AttachmentPathName = path;
}

void Mailer::setRecipient(const QString& recipient) {
    MAPIMessages1.RecipIndex = 0;
    MAPIMessages1.RecipType = mapi::ToRecipient;
    MAPIMessages1.RecipDisplayName = recipient;
}

void Mailer::handOver() {
    MAPIMessages1.setAction(mapi::SendByDialog);
}

void Mailer::signOff() {
    MAPISession1.setAction(mapi::SignOff);
}

void Mailer::noteHandOver(const SurveyContext& survey, const QString& fileName) {
    try {
        ::noteHandOver(survey, fileName, forms::today());
    } catch (const Failure&) {
        cnnMain->Errors().Clear();
    }
}

void Mailer::sendmail(const ExportedFile& file) {
    guardedWithDescription([&] {
        if (!toTestMailKey())
            return;
        beginMail();
        MAPIMessages1.MsgNoteText = toGetStandardMessage(file.customerName);
        attach(file.strGenerateXLSFile, surveyFilePath(file.strGenerateXLSFile));
        setRecipient(toGetEmailId(file.respondentName, toGetCustID(file.customerName)));
        handOver();
        noteHandOver({file.customerName, file.respondentName, file.surveyDate}, file.strGenerateXLSFile);
        signOff();
        strFound = false;
    });
}
