// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmLogDetails.h"
#include "exchange/frmMessage.h"
#include "exchange/frmReading.h"
#include "exchange/mailer.h"
#include "platform/mapi/client.h"
#include "tests/support/changedrows.h"
#include "tests/support/listview.h"
#include "tests/support/surveyfile.h"

#include <QPlainTextEdit>

namespace {
/// Acme's files a.xls, b.xls, c.xls for Ann, Bob and Cy; Ann alone has an address.
struct RegisterTest : StoreTest {
    void SetUp() override {
        StoreTest::SetUp();
        acme = addCustomer(u"Acme"_s);
        addCustomer(u"Other"_s);
        addRespondent(acme, u"Ann"_s);
        addRespondent(acme, u"Bob"_s);
        run(u"update respondent set emailid='ann@example.com' where respondentname='Ann'"_s);
        for (const QString& name : {u"a.xls"_s, u"b.xls"_s, u"c.xls"_s})
            copyHomeFile(u"template.xls"_s, name);
        run(u"insert into log (custname, sdate, respname, xlsfilename, Status) values "
            "('Acme', '2024-03-05', 'Ann', 'a.xls', True), ('Acme', '2024-03-05', 'Bob', 'b.xls', False), "
            "('Acme', '2024-03-05', 'Cy', 'c.xls', null)"_s);
    }
    static frmLogDetails& form() { return show<frmLogDetails>(); }
    static forms::ListView& list() { return *control<forms::ListView>(form(), "lsvDtls"); }
    static void choose(const std::vector<int>& rows) {
        for (int row = 0; row < list().ListCount(); ++row)
            list().setSelected(row, std::find(rows.begin(), rows.end(), row) != rows.end());
    }
    void press(const char* button) {
        ::press(form(), button);
        expectIdle();
    }
    QString mail(const QString& text, const QString& recipient, const QString& file) const {
        return u"Customer Satisfaction Survey|"_s + text + u'|' + recipient + u'|' + path(file);
    }
    void expectDelete(const QString& name, Answer answer = Answer::Yes) {
        messages.expectTitled(u"Are you sure you want to delete the Survey File - "_s + name,
                              style::yesNo + style::secondButton, answer);
    }
    /// Mails the chosen files and returns the mails.
    QStringList mailChosen() {
        press("cmdmail");
        return std::exchange(mails, {});
    }
    QStringList loggedFiles() const { return rows(u"select xlsfilename from log order by xlsfilename"_s); }
    QStringList files() const { return QDir(home()).entryList({u"?.xls"_s}); }

    int acme = 0;
    bool hasClient = true;
    QString failsOn; // the attachment that cannot be mailed
    QStringList mails;
    ShownFiles opened;
    Replaced<mapi::hasClientHook> client{[this] { return hasClient; }};
    Replaced<mapi::composeHook> composer{[this](const mapi::Mail& mail) {
        if (failsOn == mail.attachmentName)
            throw Failure(u"The client was cancelled."_s);
        mails << mail.subject + u'|' + mail.text + u'|' + mail.recipient + u'|' + mail.attachmentPath;
    }};
};

TEST_F(RegisterTest, listsAndOpensTheFilesOfACustomer) {
    EXPECT_EQ(listed(list()), (QStringList{u"a.xls|05/03/2024|Ann|Yes"_s, u"b.xls|05/03/2024|Bob|No"_s,
                                           u"c.xls|05/03/2024|Cy|"_s}));
    choose({0, 2});
    keyOn(form(), "lsvDtls", Qt::Key_Return);
    EXPECT_EQ(opened.paths, QStringList({path(u"a.xls"_s), path(u"c.xls"_s)}));
    run(u"update log set xlsfilename='../b.xls' where xlsfilename='b.xls'"_s);
    form().toFillListView();
    choose({1});
    messages.expect(u"\"../b.xls\" holds a folder where a bare file name is wanted."_s);
    key(Qt::Key_Enter);
    EXPECT_EQ(opened.paths.size(), 2);
    expectIdle();

    keyOn(form(), "cmbCustomer", Qt::Key_Down);
    EXPECT_EQ(list().ListCount(), 0);
}

TEST_F(RegisterTest, mailsTheChosenFiles) {
    choose({0, 2});
    EXPECT_EQ(mailChosen(), QStringList({mail(u"."_s, u"ann@example.com"_s, u"a.xls"_s),
                                         mail(u"."_s, u"No email address found"_s, u"c.xls"_s)}));

    add(u"standardmessage"_s, {{"customerid", acme}, {"standardmessage", u" Dear all \n"_s}});
    failsOn = u"b.xls"_s;
    choose({0, 1, 2});
    messages.expect(u"The client was cancelled."_s);
    EXPECT_EQ(mailChosen(), QStringList(mail(u"Dear all"_s, u"ann@example.com"_s, u"a.xls"_s)));
    hasClient = false;
    messages.expectCritical(
        u"Cannot send E-Mail....There is no Default Mail Client Installed on your PC..."_s);
    EXPECT_EQ(mailChosen(), QStringList());

    // The survey forms' mail: no dot, no text in place of an address.
    hasClient = true;
    Mailer().sendmail({u"Other"_s, u"Ann"_s, u"a.xls"_s});
    EXPECT_EQ(mails, QStringList{mail({}, {}, u"a.xls"_s)});
}

TEST_F(RegisterTest, aFileToMailIsLocated) {
    ASSERT_TRUE(QDir(home()).mkpath(u"moved"_s));
    const QString moved = path(u"moved/It's.xls"_s); // either apostrophe is accepted
    ASSERT_TRUE(QFile::rename(path(u"b.xls"_s), moved));
    run(u"update log set xlsfilename='It\u2019s.xls' where xlsfilename='b.xls'"_s);
    const auto mailAll = [&](const QString& answer, const QString& refusal = {}) {
        messages.expect(
            u"It\u2019s.xls file not found in the Home directory..Kindly locate the file to attach"_s,
            style::information);
        if (!refusal.isEmpty())
            messages.expect(refusal, style::critical);
        picked = answer;
        choose({0, 1, 2});
        return mailChosen();
    };
    EXPECT_EQ(mailAll(path(u"c.xls"_s), u"Wrong Survey file selected....."_s).size(), 1);
    EXPECT_TRUE(offered.endsWith(u";;Survey Files (*.xls *.xlsx *.xlsm *.ods)"));
    const QStringList all = mailAll(moved);
    EXPECT_EQ(all.size(), 3);
    EXPECT_EQ(all.value(1), mail(u"."_s, u"No email address found"_s, u"moved/It's.xls"_s));
}

TEST_F(RegisterTest, deletesTheChosenFiles) {
    const auto expectOpen = [this](const QString& name, Answer answer) {
        copyHomeFile(u"template.xls"_s, u".~lock."_s + name + u'#');
        messages.expectOpenElsewhere(name, answer);
    };
    choose({0, 1, 2});
    expectDelete(u"a.xls"_s, Answer::No);
    expectDelete(u"b.xls"_s);
    expectOpen(u"b.xls"_s, Answer::Yes);
    expectDelete(u"c.xls"_s);
    expectOpen(u"c.xls"_s, Answer::No);
    press("cmdDelete");
    EXPECT_EQ(loggedFiles(), QStringList({u"a.xls"_s, u"c.xls"_s}));
    EXPECT_EQ(files(), loggedFiles());
    // A missing file ends the mailing, whatever the answer; the list is not filled again.
    ASSERT_TRUE(QDir(home()).mkpath(u"moved"_s));
    const QString moved = path(u"moved/It\u2019s.xls"_s);
    const QString name = u"It's.xls"_s;
    ASSERT_TRUE(QFile::rename(path(u"a.xls"_s), moved));
    run(u"update log set xlsfilename='It''s.xls' where xlsfilename='a.xls'"_s);
    form().toFillListView();
    const auto removeMissing = [&](Answer answer, const QString& located, bool right) {
        picked = located;
        choose({0, 1});
        expectDelete(name);
        messages.expect(
            name + u" Survey File not found in the Current Directory......Kindly locate the file to Delete"_s,
            style::okCancel + style::secondButton, {}, answer);
        if (!right)
            messages.expect(
                u"Invalid Survey File Selected ..You must select It's.xls Survey File to Delete"_s,
                style::retryCancel, {}, Answer::Retry);
        press("cmdDelete");
    };
    removeMissing(Answer::Cancel, {}, true);
    removeMissing(Answer::Ok, path(u"c.xls"_s), false);
    EXPECT_EQ(loggedFiles(), QStringList({u"c.xls"_s, name}));
    removeMissing(Answer::Ok, moved, true);
    EXPECT_FALSE(QFile::exists(moved));
    EXPECT_EQ(loggedFiles(), QStringList(u"c.xls"_s));
    EXPECT_EQ(files(), loggedFiles());
}

TEST_F(RegisterTest, concurrentChangesAreShownAndTheSelectionStays) {
    const auto returnToForm = [] {
        frmReading::instance().Show();
        form().Show();
    };
    choose({1, 2});
    run(u"update log set Status=True where xlsfilename='b.xls'"_s);
    run(u"delete * from log where xlsfilename='a.xls'"_s);
    returnToForm();
    EXPECT_EQ(listed(list()), (QStringList{u"b.xls|05/03/2024|Bob|Yes"_s, u"c.xls|05/03/2024|Cy|"_s}));
    EXPECT_EQ(list().SelectedRows(), (std::vector{0, 1}));
    run(u"delete * from customer where custname='Acme'"_s);
    returnToForm();
    EXPECT_EQ(control<forms::ComboBox>(form(), "cmbCustomer")->ListIndex(), -1);
    EXPECT_EQ(list().ListCount(), 0);
}

TEST_F(RegisterTest, theStandardMessageIsStored) {
    const auto edit = [this](const QString& before, const QString& text, bool saves = true) {
        QTimer::singleShot(0, &form(), [&] {
            frmMessage& dialog = frmMessage::instance();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            EXPECT_EQ(dialog.txtMessage()->toPlainText(), before);
            dialog.txtMessage()->setFocus();
            dialog.txtMessage()->selectAll();
            type(text);
            saves ? ::press(dialog, "cmdSave") : key(Qt::Key_Escape);
        });
        press("cmdStandardMessage"); // returns when the dialog is closed
        return value(u"select standardmessage from standardmessage"_s);
    };
    EXPECT_EQ(edit({}, u"  "_s), QString());
    const QString stored = u" It\u2019s time "_s;
    EXPECT_EQ(edit({}, u" It's time "_s), stored);
    EXPECT_EQ(edit(stored.trimmed(), u" "_s), stored); // a blank one is not saved
    EXPECT_EQ(edit(stored.trimmed(), u"not this"_s, false), stored);
    EXPECT_EQ(value(u"select customerid from standardmessage"_s), QString::number(acme));

    ChangedRows changed;
    QTimer::singleShot(0, &form(), [&] {
        frmMessage& dialog = frmMessage::instance();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        run(u"update standardmessage set standardmessage='Theirs'"_s);
        dialog.txtMessage()->setFocus();
        dialog.txtMessage()->selectAll();
        type(u"Mine"_s);
        ::press(dialog, "cmdSave");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(value(u"select standardmessage from standardmessage"_s), u"Theirs"_s);
        changed.answer = Keep::Mine;
        ::press(dialog, "cmdSave");
    });
    press("cmdStandardMessage");
    ASSERT_EQ(changed.asked.size(), 2U);
    EXPECT_EQ(changed.asked[1], (ChangedRow{u"Standard Message of Acme"_s,
                                            {{u"Message"_s, stored.trimmed(), u"Theirs"_s, u"Mine"_s}}}));
    EXPECT_EQ(value(u"select standardmessage from standardmessage"_s), u"Mine"_s);
}
} // namespace
