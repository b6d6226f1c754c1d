// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/dispatch.h"
#include "exchange/frmHandOver.h"
#include "exchange/frmLogDetails.h"
#include "exchange/frmResponseSettings.h"
#include "exchange/frmResponses.h"
#include "platform/mapi/client.h"
#include "tests/support/changedrows.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

#include <QPlainTextEdit>
#include <QSpinBox>

/// Ann and Bob are asked the questions 0 and 4 today, Cora of Brown on 1 February.
struct ResponsesTest : SurveyTest {
    enum Column { Tick, Customer, Respondent, Date, HandedOver, Due, State };

    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        addStored(bob, today, {0, 4});
        const int brown = addCustomer(u"Brown"_s);
        cora = addRespondent(brown, u"Cora"_s);
        addQuestionnaire(cora, addSurvey(brown, {2024, 2, 1}), {question[0]});
    }
    static frmResponses& form() { return show<frmResponses>(); }
    static QTreeView& list() { return *control<QTreeView>(form(), "lsvResponses"); }
    /// The rows of the list in its order, their texts joined by a bar.
    static QStringList shown() { return listed(list()).replaceInStrings(QRegularExpression(u"^\\|"_s), {}); }
    static void tickAll() {
        list().setFocus();
        shortcut(Qt::Key_A);
        key(Qt::Key_Space);
    }
    static QString foot() { return control<QLabel>(form(), "lblFoot")->text(); }
    /// Presses a button that opens a dialog, and does the steps there.
    template <class Dialog> void inDialog(const char* button, const std::function<void(Dialog&)>& steps) {
        QTimer::singleShot(0, &form(), [steps] {
            Dialog& dialog = Dialog::instance();
            EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isActiveWindow(); }));
            steps(dialog);
        });
        press(form(), button);
        expectIdle();
    }
    /// Enters dates in a dialog, each with Enter, while someone else runs a statement.
    void enterDate(const char* button, const char* picker, const QStringList& dates,
                   const QString& meanwhile = {}) {
        inDialog<frmHandOver>(button, [=](frmHandOver& dialog) {
            if (!meanwhile.isEmpty())
                run(meanwhile);
            for (const QString& date : dates) {
                control<forms::DTPicker>(dialog, picker)->setFocus();
                type(date);
                key(Qt::Key_Return);
            }
        });
    }
    static QStringList dispatches() {
        return rows(
            u"select respondentid, surveyid, filename, handedover, due from dispatch order by 1, 2"_s);
    }
    void handOver(int respondent, const QDate& due) const {
        add(u"dispatch"_s, {{"custid", acme},
                            {"respondentid", respondent},
                            {"surveyid", 1},
                            {"handedover", QDate(2024, 2, 20)},
                            {"due", due}});
    }
    void registerFile(const QString& name, const QString& respondent, int id) const {
        copyHomeFile(u"template.xls"_s, name);
        addToRegister(name, id, respondent);
    }

    int cora = 0;
    QStringList mails;
    QString failsOn = u"nobody"_s; ///< the recipient whose mail is cancelled
    Replaced<mapi::hasClientHook> client{[] { return true; }};
    Replaced<mapi::composeHook> composer{[this](const mapi::Mail& mail) {
        if (mail.recipient == failsOn)
            throw Failure(u"The client was cancelled."_s);
        mails << QStringList{mail.recipient, mail.subject, mail.text, mail.attachmentPath}.join(u'|');
    }};
};
