// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "exchange/frmLogDetails.h"
#include "exchange/frmMessage.h"
#include "exchange/mailer.h"
#include "platform/crystal/crystalreport.h"
#include "platform/crystal/previewwindow.h"
#include "platform/excel/application.h"
#include "platform/forms/lists.h"
#include "platform/forms/listview.h"
#include "platform/mapi/client.h"
#include "tests/support/storetest.h"

#include <QDir>
#include <QPlainTextEdit>
#include <QTimer>

using namespace Qt::StringLiterals;
namespace style = forms::style;
using forms::Answer;

namespace {

const QString title = u"Gaugewell v2.1"_s;
const QString noClient = u"Cannot send E-Mail....There is no Default Mail Client Installed on your PC..."_s;

/// Acme's files a.xls, b.xls, c.xls for Ann, Bob and Cy; Ann alone has an address.
class RegisterTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        acme = addCustomer(u"Acme"_s);
        addCustomer(u"Other"_s);
        add(u"respondent"_s,
            {{"custid", acme}, {"respondentname", u"Ann"_s}, {"emailid", u"ann@example.com"_s}});
        addRespondent(acme, u"Bob"_s);
        for (const auto& [name, respondent, status] :
             std::vector<std::tuple<QString, QString, QVariant>>{{u"a.xls"_s, u"Ann"_s, true},
                                                                 {u"b.xls"_s, u"Bob"_s, false},
                                                                 {u"c.xls"_s, u"Cy"_s, ado::Null}}) {
            add(u"log"_s, {{"custname", u"Acme"_s},
                           {"respname", respondent},
                           {"xlsfilename", name},
                           {"sdate", QDate(2024, 3, 5)},
                           {"Status", status}});
            ASSERT_TRUE(QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls"), path(name)));
        }
        mapi::hasClientSeat = [this] { return clientThere; };
        mapi::composeSeat = [this](const mapi::Mail& mail) {
            if (failsOn == mail.attachmentName)
                throw mapi::Failure(u"The client was cancelled."_s);
            mails << mail.subject + u'|' + mail.text + u'|' + mail.recipient + u'|' + mail.attachmentPath;
        };
        forms::openFileSeat = [this](const forms::CommonDialog& dialog) {
            dialogs << dialog.Filter + u' ' + QString::number(dialog.Flags);
            return picked;
        };
        excel::Application::setFileShower([this](const QString& file) { opened << file; });
    }
    void TearDown() override {
        excel::Application::setFileShower({});
        StoreTest::TearDown();
    }
    static frmLogDetails& form() {
        frmLogDetails::instance().Show();
        return frmLogDetails::instance();
    }
    static forms::ListView& list() { return *control<forms::ListView>(form(), "lsvDtls"); }
    static void choose(const std::vector<int>& rows) {
        for (int row = 0; row < list().ListCount(); ++row)
            list().setSelected(row, std::find(rows.begin(), rows.end(), row) != rows.end());
    }
    static QString panel() { return MDIMain::instance().stsBar->Panels(1).Text(); }
    QString path(const QString& name) const { return home() + u'/' + name; }
    void press(const char* button) {
        ::press(form(), button);
        EXPECT_EQ(messages.left(), 0) << button;
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << button;
    }
    QString mail(const QString& text, const QString& recipient, const QString& file) const {
        return u"Customer Satisfaction Survey|"_s + text + u'|' + recipient + u'|' + path(file);
    }
    QStringList logged() const { return rows(u"select xlsfilename from log"_s); }
    QStringList files() const { return QDir(home()).entryList({u"?.xls"_s}); }

    int acme = 0;
    bool clientThere = true;
    QString failsOn; // this attachment
    QString picked;
    QStringList mails, dialogs, opened;
};

TEST_F(RegisterTest, listsAndOpensTheFilesOfACustomer) {
    std::vector<QStringList> shown;
    for (int row = 0; row < list().ListCount(); ++row)
        shown.push_back({list().Text(row), list().Text(row, 1), list().Text(row, 2), list().Text(row, 3)});
    EXPECT_EQ(shown, (std::vector<QStringList>{{u"a.xls"_s, u"05/03/2024"_s, u"Ann"_s, u"Yes"_s},
                                               {u"b.xls"_s, u"05/03/2024"_s, u"Bob"_s, u"No"_s},
                                               {u"c.xls"_s, u"05/03/2024"_s, u"Cy"_s, u""_s}}));
    choose({});
    for (const char* button : {"cmdmail", "cmdDelete"}) // nothing chosen, nothing done
        press(button);
    list().setFocus();
    key(Qt::Key_Return);
    EXPECT_TRUE(opened.isEmpty());
    choose({0, 2});
    key(Qt::Key_Return);
    EXPECT_EQ(opened, QStringList({path(u"a.xls"_s), path(u"c.xls"_s)}));
    const QPoint second = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(opened.value(2), path(u"b.xls"_s));

    run(u"update log set xlsfilename='../b.xls' where xlsfilename='b.xls'"_s);
    form().toFillListView();
    QFile::remove(path(u"a.xls"_s));
    choose({0, 1}); // the first failure ends it
    list().setFocus();
    messages.expectBeginning(u"The file \"%1\" "_s.arg(path(u"a.xls"_s)));
    key(Qt::Key_Enter);
    choose({1});
    messages.expect(u"\"../b.xls\" holds a folder where a bare file name is wanted."_s);
    key(Qt::Key_Enter);
    EXPECT_EQ(opened.size(), 3);
    EXPECT_EQ(panel(), QString());

    auto* customers = control<forms::ComboBox>(form(), "cmbCustomer");
    customers->setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(list().ListCount(), 0);
}

TEST_F(RegisterTest, mailsTheChosenFiles) {
    clientThere = false;
    choose({0});
    messages.expect(noClient, style::critical, title);
    press("cmdmail");
    clientThere = true;
    choose({0, 2});
    press("cmdmail");
    EXPECT_EQ(mails, QStringList({mail(u"."_s, u"ann@example.com"_s, u"a.xls"_s),
                                  mail(u"."_s, u"No email address found"_s, u"c.xls"_s)}));

    add(u"standardmessage"_s, {{"customerid", acme}, {"standardmessage", u" Dear all \n"_s}});
    mails.clear();
    failsOn = u"b.xls"_s;
    choose({0, 1, 2});
    messages.expect(u"The client was cancelled."_s);
    press("cmdmail");
    EXPECT_EQ(mails, QStringList(mail(u"Dear all"_s, u"ann@example.com"_s, u"a.xls"_s)));

    // The survey forms' mail: no dot, no text in place of an address.
    mails.clear();
    Mailer mailer;
    mailer.sendmail({u"Acme"_s, u"Bob"_s, u"a.xls"_s});
    mailer.sendmail({u"Other"_s, u"Ann"_s, u"a.xls"_s});
    EXPECT_EQ(mails, QStringList({mail(u"Dear all"_s, {}, u"a.xls"_s), mail({}, {}, u"a.xls"_s)}));
    messages.expect(u"The client was cancelled."_s);
    mailer.sendmail({u"Acme"_s, u"Bob"_s, u"b.xls"_s});
    EXPECT_TRUE(mailer.strFound);
    clientThere = false;
    messages.expect(noClient, style::critical, title);
    mailer.sendmail({u"Acme"_s, u"Bob"_s, u"a.xls"_s});
    EXPECT_FALSE(mailer.strFound);
}

TEST_F(RegisterTest, aFileToMailIsLocated) {
    ASSERT_TRUE(QDir(home()).mkpath(u"moved"_s));
    ASSERT_TRUE(QFile::rename(path(u"b.xls"_s), path(u"moved/b.xls"_s)));
    const auto mailAll = [&](const QString& answer) {
        mails.clear();
        picked = answer;
        choose({0, 1, 2});
        press("cmdmail");
        return mails.size();
    };
    const QString locate = u"b.xls file not found in the Home directory..Kindly locate the file to attach"_s;
    messages.expect(locate, style::information);
    messages.expect(u"Process cancelled..."_s, style::information);
    EXPECT_EQ(mailAll({}), 1);
    messages.expect(locate, style::information);
    messages.expect(u"Wrong Survey file selected....."_s, style::critical);
    EXPECT_EQ(mailAll(path(u"c.xls"_s)), 1);
    messages.expect(locate, style::information);
    EXPECT_EQ(mailAll(path(u"moved/b.xls"_s)), 3);
    EXPECT_TRUE(mails[1].endsWith(path(u"moved/b.xls"_s)));
    EXPECT_EQ(dialogs, QStringList(3, u"*.xls|*.xls|*.xls 4"_s));
    failsOn = u"c.xls"_s; // after the dialog failures are passed over
    messages.expect(locate, style::information);
    EXPECT_EQ(mailAll(path(u"moved/b.xls"_s)), 2);
}

TEST_F(RegisterTest, deletesTheChosenFiles) {
    const auto ask = [this](const QString& name, Answer answer) {
        messages.expect(u"Are you sure you want to delete the Survey File - "_s + name, style::yesNo, title,
                        answer);
    };
    choose({0, 1});
    ask(u"a.xls"_s, Answer::No);
    ask(u"b.xls"_s, Answer::Yes);
    press("cmdDelete");
    EXPECT_EQ(logged(), QStringList({u"a.xls"_s, u"c.xls"_s}));
    EXPECT_EQ(files(), logged());
    EXPECT_EQ(list().ListCount(), 2);
    EXPECT_EQ(panel(), QString());

    // A file that is not there ends it, whatever is answered; the list is not filled again.
    ASSERT_TRUE(QDir(home()).mkpath(u"moved"_s));
    ASSERT_TRUE(QFile::rename(path(u"a.xls"_s), path(u"moved/a.xls"_s)));
    const auto fail = [&](Answer answer, const QString& located) {
        picked = located;
        choose({0, 1});
        ask(u"a.xls"_s, Answer::Yes);
        messages.expect(
            u"a.xls Survey File not found in the Current Directory......Kindly locate the file to "
            "Delete"_s,
            style::okCancel, {}, answer);
    };
    const auto expectInvalid = [&] {
        messages.expect(u"Invalid Survey File Selected ..You must select a.xls Survey File to Delete"_s,
                        style::retryCancel, {}, Answer::Retry);
    };
    fail(Answer::Cancel, {});
    press("cmdDelete");
    EXPECT_TRUE(dialogs.isEmpty());
    for (const QString& wrong : {QString(), path(u"c.xls"_s)}) {
        fail(Answer::Ok, wrong);
        expectInvalid();
        press("cmdDelete");
    }
    EXPECT_EQ(logged(), QStringList({u"a.xls"_s, u"c.xls"_s}));
    fail(Answer::Ok, path(u"moved/a.xls"_s));
    press("cmdDelete");
    EXPECT_EQ(dialogs, QStringList(3, u"All Files (*.xls)|*.xls 4"_s));
    EXPECT_FALSE(QFile::exists(path(u"moved/a.xls"_s)));
    EXPECT_EQ(logged(), QStringList(u"c.xls"_s));
    EXPECT_EQ(files(), logged());
    EXPECT_EQ(list().ListCount(), 2);
    EXPECT_EQ(panel(), QString());
}

TEST_F(RegisterTest, theStandardMessageIsStored) {
    const auto edit = [this](const std::function<void(frmMessage&)>& work) {
        QTimer::singleShot(0, &form(), [&] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(&frmMessage::instance()));
            work(frmMessage::instance());
            frmMessage::unload();
        });
        press("cmdStandardMessage"); // returns when the dialog is gone
        EXPECT_EQ(frmMessage::loaded(), nullptr);
        return value(u"select standardmessage from standardmessage where customerid="_s +
                     QString::number(acme));
    };
    const auto save = [&](const QString& text) {
        return edit([&](frmMessage& dialog) {
            dialog.txtMessage()->setFocus();
            dialog.txtMessage()->selectAll();
            key(Qt::Key_Delete);
            type(text);
            ::press(dialog, "cmdSave");
        });
    };
    EXPECT_EQ(save(u"  "_s), QString());
    EXPECT_EQ(save(u" Please answer. "_s), u"Please answer."_s);
    EXPECT_EQ(save(u" It's time "_s), u" It\u2019s time "_s);
    EXPECT_EQ(save(u" "_s), u" It\u2019s time "_s); // a blank one keeps the old
    EXPECT_EQ(edit([](frmMessage& dialog) {
                  EXPECT_EQ(dialog.txtMessage()->toPlainText(), u"It\u2019s time"_s);
                  dialog.txtMessage()->setFocus();
                  type(u"not this"_s);
                  key(Qt::Key_Escape);
              }),
              u" It\u2019s time "_s);
    EXPECT_EQ(value(u"select count(*) from standardmessage"_s), u"1"_s);
}

TEST_F(RegisterTest, printsTheRegisterOfTheCustomer) {
    QStringList previews;
    crystal::previewSeat = [&](const auto&, const QString& windowTitle, int state) {
        previews << windowTitle + u' ' + QString::number(state);
    };
    messages.expectBeginning(u"Error : "_s); // no layout
    press("cmdPrint");
    ASSERT_TRUE(QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/log.rpt"), path(u"log.rpt"_s)));
    press("cmdPrint");
    EXPECT_EQ(previews, QStringList(u"Log Details 2"_s));
    EXPECT_EQ(panel(), QString());
    crystal::previewSeat = crystal::PreviewWindow::show;
}

} // namespace
