// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/mapi/mapimessages.h"
#include "platform/mapi/mapisession.h"
#include "survey/questionnaires/surveykey.h"

/// The survey file just exported, and for whom.
struct ExportedFile {
    QString customerName;
    QString respondentName;
    QString strGenerateXLSFile; ///< bare name of a file in the home directory
    QString surveyDate = {};    ///< dd/mm/yyyy; empty: the hand-over is not noted
};

/// Hands survey files to the user's mail client, each with the customer's standard message. Each form that
/// mails has one.
class Mailer {
public:
    /// Whether there is a mail client; false between mails.
    bool strFound = false;
    mapi::MAPISession MAPISession1;
    mapi::MAPIMessages MAPIMessages1;

    /// Mails the file just exported. Shows a message if there is no mail client; a failure shows its own
    /// description.
    void sendmail(const ExportedFile& file);

    /// Sets strFound. False, after a message, if there is no mail client.
    bool toTestMailKey();
    /// The customer's standard message, trimmed; empty if there is none. A failure is shown and returns an
    /// empty text.
    QString toGetStandardMessage(const QString& customerName) const;
    /// The respondent's address, or empty. A failure is shown and returns an empty text.
    QString toGetEmailId(const QString& respondentName, int custid) const;

    // The steps of a mail. They throw Failure.
    /// Signs on and begins a message with its subject.
    void beginMail();
    /// The name that the respondent sees, and the file's full path.
    void attach(const QString& name, const QString& path);
    void setRecipient(const QString& recipient);
    /// Hands the message to the mail client.
    void handOver();
    void signOff();

protected:
    /// Notes in table dispatch what has been handed to the mail client. The mail is on its way then, so a
    /// failure is not shown: the user can enter the hand-over by hand.
    static void noteHandOver(const SurveyContext& survey, const QString& fileName);
};
