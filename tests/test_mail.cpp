// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mapi/client.h"
#include "platform/mapi/mapimessages.h"
#include "platform/mapi/mapisession.h"
#include "tests/support/files.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QUrlQuery>
#include <csignal>

namespace {
/// A stand-in for the mail client: xdg-email calls a hook script, which records the mailto URL.
struct MailTest : ::testing::Test {
    void SetUp() override {
        qputenv("PATH", folder.path().toUtf8() + ':' + path);
        qputenv("MAIL_RECORD", record.toUtf8());
        installClient("printf %s \"$1\" >\"$MAIL_RECORD\"");
    }
    void TearDown() override { qputenv("PATH", path); }

    void installClient(const QByteArray& script, const QString& name = u"xdg-email-hook.sh"_s) {
        writeFile(folder.filePath(name), "#!/bin/sh\n" + script + "\n");
        QFile::setPermissions(folder.filePath(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString attachment(const QString& name) {
        writeFile(folder.filePath(name), {});
        return folder.filePath(name);
    }
    static mapi::MAPIMessages message(const QString& recipient, const QString& text, const QString& file) {
        mapi::MAPISession session;
        session.setAction(mapi::SignOn);
        mapi::MAPIMessages messages;
        messages.SessionID = session.SessionID;
        messages.setAction(mapi::Compose);
        messages.MsgSubject = u"Customer Satisfaction Survey"_s;
        messages.MsgNoteText = text;
        messages.RecipDisplayName = recipient;
        messages.AttachmentPathName = file;
        return messages;
    }
    static QString failureOf(mapi::MAPIMessages messages) {
        return ::failureOf([&] { messages.setAction(mapi::SendByDialog); });
    }

    QTemporaryDir folder;
    const QString record = folder.filePath(u"record"_s);
    const QByteArray path = qgetenv("PATH");
};

TEST_F(MailTest, theClientReceivesUnusualTextsAndNamesUnchanged) {
    const std::tuple<QString, QString, QString> mails[] = {
        {u"ann@example.com"_s, u"Dear Ann,\nplease fill in\\no later than 5%.\n"_s, u"12345.xls"_s},
        {u""_s, u""_s, u"Été à l’œil & 100%.final.xls"_s},
        {u"No email address found"_s, u"."_s, u"-a;$(id) 'b' \"c\" `d` #?=+.xls"_s},
        {u"a@b.c?attach=/etc/passwd&x"_s, u"--attach /etc/passwd"_s, u"no extension"_s},
        {u"--attach"_s, u"\tWeiß, \"Grün\" <b>&amp;\\t\\c"_s, u"x,y.xls"_s},
    };
    for (const auto& [recipient, text, name] : mails) {
        ASSERT_EQ(failureOf(message(recipient, text, attachment(name))), QString()) << name;
        const QUrl url(QString::fromUtf8(contentOf(record)), QUrl::StrictMode);
        const QUrlQuery query(url);
        EXPECT_EQ(url.path(QUrl::FullyDecoded), recipient);
        EXPECT_EQ(query.queryItemValue(u"subject"_s, QUrl::FullyDecoded), u"Customer Satisfaction Survey");
        EXPECT_EQ(query.queryItemValue(u"body"_s, QUrl::FullyDecoded),
                  QString(text).replace(u"\n"_s, u"\r\n"_s));
        EXPECT_EQ(query.allQueryItemValues(u"attach"_s, QUrl::FullyDecoded),
                  QStringList(folder.filePath(name)));
        ASSERT_TRUE(QFile::remove(record));
    }
}

TEST_F(MailTest, failuresToReachTheClientAreReported) {
    const auto messageWith = [](const QString& file) { return message(u"ann@example.com"_s, u"."_s, file); };
    mapi::MAPIMessages good = messageWith(attachment(u"a.xls"_s));
    installClient("exit 1");
    EXPECT_EQ(
        failureOf(good),
        u"The mail was not handed over: the mail program reported a failure, or the mail was cancelled.");
    const QString missing = folder.filePath(u"none.xls"_s);
    EXPECT_EQ(failureOf(messageWith(missing)), u"The file to attach is missing: "_s + missing);
    EXPECT_TRUE(failureOf(messageWith(attachment(u"a\\nb.xls"_s))).contains(u"backslash"_s));
    qputenv("PATH", folder.path().toUtf8());
    EXPECT_TRUE(failureOf(good).startsWith(u"The mail program could not be started: "_s));
}

TEST_F(MailTest, aClientThatStaysOpenDoesNotBlockTheProgram) {
    installClient("echo $PPID >\"$MAIL_RECORD\"; while [ -e \"$MAIL_RECORD\" ]; do sleep 0.1; done");
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(failureOf(message(u"ann@example.com"_s, u"."_s, {})), QString());
    EXPECT_LT(clock.elapsed(), 30'000);
    const pid_t waiting = contentOf(record).trimmed().toInt();
    ASSERT_TRUE(waiting > 1 && kill(waiting, 0) == 0) << "it stays open";
    ASSERT_TRUE(QFile::remove(record)); // lets it end
    EXPECT_TRUE(QTest::qWaitFor([&] { return kill(waiting, 0) != 0; })) << "it is still running";
}

TEST_F(MailTest, theClientIsTheDesktopsMailtoHandler) {
    qunsetenv("MAILER");
    installClient("[ \"$*\" = \"query default x-scheme-handler/mailto\" ] && echo thunderbird.desktop",
                  u"xdg-mime"_s);
    EXPECT_TRUE(mapi::hasClient());
    qputenv("PATH", "/nowhere");
    EXPECT_FALSE(mapi::hasClient());
}
} // namespace
