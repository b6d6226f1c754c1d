// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/filenames.h"
#include "exchange/files/lastmarks.h"
#include "exchange/files/surveylog.h"
#include "exchange/frmSetting.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/mapi/client.h"
#include "tests/support/gridform.h"
#include "tests/support/surveytest.h"

namespace {
const QString name = u"713.xls"_s; // made of the keys of survey, customer and respondent
const QString wordsAsked =
    u"insert into feedbackdescriptive (respondentid, questionid, surveyid, surveydate, weightage) values "_s;

/// A cell as read by xlrd: "B14 locked FF0000 wrapped 'On time?'", with the colour of its border.
QString shownCell(const QString& address, const QJsonObject& cell) {
    QStringList parts = cell[u"borders"].toVariant().toStringList();
    parts.removeDuplicates();
    parts.prepend(address + (cell[u"locked"].toBool() ? u" locked" : u" open"));
    const QVariant value = cell[u"value"].toVariant();
    const QString quote = value.toString().isEmpty() || cell[u"value"].isDouble() ? u""_s : u"'"_s;
    parts << (cell[u"wrapped"].toBool() ? u"wrapped"_s : u""_s) << quote + value.toString() + quote;
    parts.removeAll(QString());
    return parts.join(u' ');
}

/// Today's questionnaire of respondent 3, Ann, in survey 7 has question 0 of Delivery, 3 and 4 of Quality.
struct ExportTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        strCompanyName = u"Larkmoor"_s;
        copyHomeFile(u"template.xls"_s);
        ann = 3;
        run(u"update respondent set respondentid=3 where respondentname='Ann'"_s);
        run(u"insert into survey (surveyid, sdate, custid) values (7, '2024-03-05', 1)"_s);
        addStored(ann, today, {3, 0, 4});
    }
    /// Ann's key sorts her after Bob.
    frmNewSurvey& open() { return SurveyTest::open(1); }
    static void letUserNameFiles() { run(u"update setting set checkeduser=True"_s); }
    void expectOverwrite(Answer answer, const QString& owners = {}) {
        messages.expectAsked(name +
                                 u" file apready exist for Respondent - Ann for Survey Date - "
                                 u"05/03/2024....Do you want to overwrite?\r\n" +
                                 owners,
                             answer);
    }
    void press(const char* button = "cmdExport") {
        ::press(open(), button);
        EXPECT_TRUE(typed.isEmpty());
        expectIdle();
        frmNewSurvey::unload();
    }
    QStringList log() const {
        return rows(u"select respname, xlsfilename, respid, sdate, surveyid, Status from log"_s);
    }
    static QString logRow(const QString& fileName, bool read = false) {
        return u"Ann|"_s + fileName + u"|3|05/03/2024|7|" + (read ? u"True" : u"False");
    }
    QString cell(const QString& fileName, const QString& address) const {
        const excel::Workbook book = excel::Application().Workbooks().Open(path(fileName));
        return book.Worksheets(u"Sheet1"_s).Range(address).Value().text();
    }

    QStringList typed; // answers to the save dialog, in order
    Replaced<forms::saveFileHook> dialog{[this](const auto&) {
        EXPECT_FALSE(typed.isEmpty()) << "the dialog came once too often";
        return typed.isEmpty() ? QString() : typed.takeFirst();
    }};
    ShownFiles opened;
};

TEST_F(ExportTest, theExportedFileAsReadByXlrd) {
    addScore(ann, question[0], 1, today.addDays(-1), 9, 7);
    run(wordsAsked + u"(3, 5, 7, '2024-02-25', 6)");
    frmNewSurvey& editor = open();
    const Replaced<forms::todayHook> exportDay([] { return QDate(2024, 3, 9); });
    messages.expectExported(Answer::Yes);
    ::press(editor, "cmdExport");
    expectIdle();
    EXPECT_EQ(opened.paths, QStringList{path(name)});
    EXPECT_EQ(log(), QStringList{logRow(name)});

    EXPECT_TRUE(contentOf(path(name)).contains(QByteArray::fromHex("13000200d3dd"))); // the password's hash
    const QJsonObject seen = readByXlrd(path(name));
    EXPECT_EQ(seen[u"B19"][u"font"].toString(), u"000080"_s);
    const QString expected[] = {
        u"A1 locked wrapped 'Larkmoor'"_s, u"B3 locked 'Customer Satisfaction Survey'"_s,
        u"B8 locked wrapped 'Customer Name : Acme'"_s, u"B9 locked wrapped 'Respondent Name : Ann'"_s,
        u"B10 locked '2024-03-05 00:00:00'"_s, // the template's formula
        u"H1 locked '2024-03-09 00:00:00'"_s, u"I1 locked '1'"_s, u"I2 locked '3'"_s,
        u"I3 locked '2024-03-05 00:00:00'"_s, u"I4 locked '3'"_s, u"I5 open '7'"_s,
        // Score questions, the second without previous marks
        u"A14 locked 000000 wrapped 'Delivery'"_s, u"B14 locked FF0000 wrapped 'On time?'"_s, u"B15 locked"_s,
        u"C14 open 000000"_s, u"D14 open 000000"_s, u"E14 locked 000000 7"_s, u"F14 locked 000000 9"_s,
        u"I14 locked '1'"_s, u"A16 locked 000000 wrapped 'Quality'"_s, u"E16 locked 000000"_s,
        u"I16 locked '4'"_s,
        // a Descriptive question
        u"A18 locked"_s, u"B18 locked 000080 wrapped 'What else?'"_s,
        u"B19 open 0000FF wrapped 'Type your Answer here'"_s, u"C18 locked"_s, u"D18 open 000000"_s,
        u"E18 locked"_s, u"F18 locked 000000 6"_s, u"I18 locked '5'"_s};
    for (const QString& cell : expected) {
        const QString address = cell.section(u' ', 0, 0);
        EXPECT_EQ(shownCell(address, seen[address].toObject()), cell);
    }
    for (const QString& address : u"A14 B14 C14 D14 E14 F14 B18 C18 D18 F18 B19"_s.split(u' '))
        EXPECT_EQ(seen[address][u"fill"] == u"C0C0C0"_s, seen[address][u"locked"].toBool()) << address;
}

TEST_F(ExportTest, anExistingFileIsOverwrittenInPlace) {
    messages.expectExported();
    press();
    EXPECT_EQ(
        QProcess::execute(u"ssconvert"_s, {u"-T"_s, u"Gnumeric_Excel:excel_biff8"_s, u"--set"_s, u"C14=4"_s,
                                           u"--set"_s, u"D14=9"_s, path(name), path(u"by gnumeric.xls"_s)}),
        0);
    EXPECT_TRUE(QFile::remove(path(name)) && QFile::rename(path(u"by gnumeric.xls"_s), path(name)));
    frmFeedBackObj::instance().Show();
    clickEntry(frmFeedBackObj::instance(), "lstRespname", 1);
    ::press(frmFeedBackObj::instance(), "cmdRead");
    EXPECT_EQ(EditedGrid(frmFeedBackObj::instance(), "grdDtls", "txtDtls").row(2), u"On time?|9|4|"_s);
    frmFeedBackObj::unload();
    run(u"delete * from responquesindex where questionid="_s + QString::number(question[3]));

    EXPECT_EQ(log(), QStringList{logRow(name, true)});

    letUserNameFiles(); // the register's name wins
    expectOverwrite(Answer::Yes);
    messages.expectExported();
    press();
    EXPECT_EQ(log(), QStringList{logRow(name)});
    QStringList cells; // the last one is a remnant
    for (const QString& address : u"I4 C14 D14 I14 I16 B17 B19 D18 I18"_s.split(u' '))
        cells << cell(name, address);
    EXPECT_EQ(cells.join(u'|'), u"2|||1|5|Type your Answer here|||5");

    // A file from before the customer was renamed is not replaced without a question.
    frmSelectSurvey::unload();
    run(u"update customer set custname='Acme Ltd'"_s);
    run(u"update setting set checkeduser=False"_s);
    expectOverwrite(Answer::No);
    press();
    EXPECT_EQ(cell(name, u"B8"_s), u"Customer Name : Acme"_s);
}

TEST_F(ExportTest, theSettingDecidesWhoNamesTheFiles) {
    const auto choose = [](Qt::Key direction, bool takes) {
        control<QAction>(MDIMain::instance(), "mnuSettings")->trigger();
        key(direction);
        takes ? ::press(frmSetting::instance(), "cmdOK") : key(Qt::Key_Escape);
        return value(u"select checkeduser from setting"_s);
    };
    EXPECT_EQ(choose(Qt::Key_Up, false), u"False"_s);
    EXPECT_EQ(choose(Qt::Key_Up, true), u"True"_s);
    EXPECT_TRUE(open().blnSetting);
}

TEST_F(ExportTest, theUserNamesTheFile) {
    letUserNameFiles();
    add(u"log"_s, {{"custname", u"Other"_s}, {"respname", u"Ann"_s}, {"xlsfilename", u"taken.xls"_s}});
    const QByteArray blank = contentOf(path(u"template.xls"_s));
    const auto expectDuplicate = [this] {
        messages.expectCritical(u"Duplicate Survey File...Cannot Save Duplicate Survey File..."_s);
    };
    typed << u"/elsewhere/TAKEN.xls"_s << u"/elsewhere/  "_s;
    expectDuplicate();
    messages.expectInformation(u"Survey File Export cancelled..."_s);
    press();
    EXPECT_EQ(rows(u"select xlsfilename from log"_s), QStringList{u"taken.xls"_s});
    EXPECT_EQ(QDir(home()).entryList({u"*.xls"_s}), QStringList{u"template.xls"_s});

    for (const QString& own : {u"Template.XLS"_s, u"Tallywell.mdb"_s, u"Satis.bmp"_s, u"perform.bmp"_s,
                               u"company.txt"_s, u"new.rpt"_s, u"GWL HELP 2.1.HLP"_s}) {
        typed << u"/elsewhere/"_s + own;
        expectDuplicate();
    }
    for (const QString& open : {u"open.xls"_s, u"~$open.xls"_s})
        copyHomeFile(u"template.xls"_s, open);
    messages.expectOpenElsewhere(u"open.xls"_s, Answer::No);
    typed << path(u"open.xls"_s) << u"/elsewhere/Ann's Écho v1.2"_s;
    messages.expectExported(Answer::Yes);
    press();
    const QString chosen = u"Ann\u2019s Écho v1.2"_s;
    EXPECT_EQ(log().value(1), logRow(chosen));
    EXPECT_EQ(cell(chosen, u"B8"_s), u"Customer Name : Acme"_s);
    EXPECT_EQ(opened.paths, QStringList{path(chosen)});

    EXPECT_EQ(contentOf(path(u"template.xls"_s)), blank);
}

TEST_F(ExportTest, overwritingWarnsOfAnotherOwnerAndAnOpenSpreadsheet) {
    messages.expectExported();
    press();
    run(u"insert into log (custname, respname, respid, xlsfilename, sdate) values ('Acme', 'Ann', 3, '%1', "
        "'2024-02-01'), ('Other', 'Zoe', 9, '%1', '2024-03-05')"_s.arg(name));
    const QByteArray before = contentOf(path(name));
    copyHomeFile(u"template.xls"_s, u"~$"_s + name);
    const std::vector<Answer> asked[] = {{Answer::Yes, Answer::No}, {Answer::Yes, Answer::Yes}};
    for (const auto& answers : asked) {
        expectOverwrite(answers[0], u"In the register the file belongs to:\r\nAcme, Ann, 01/02/2024\r\n"
                                    "Other, Zoe, 05/03/2024"_s);
        messages.expectOpenElsewhere(name, answers[1]);
        if (answers.back() == Answer::Yes)
            messages.expectExported();
        press();
        EXPECT_EQ(contentOf(path(name)) == before, answers.back() == Answer::No);
    }
}

TEST_F(ExportTest, nothingIsExportedForADeletedRespondent) {
    open();
    withoutOwner(u"Ann"_s, [] { ::press(frmNewSurvey::instance(), "cmdExport"); });
}

TEST_F(ExportTest, failures) {
    ASSERT_TRUE(QDir(home()).mkpath(u"folder.xls/full"_s));
    letUserNameFiles(); // once the dialog has been shown, a failing step is skipped
    typed << u"folder.xls"_s;
    messages.expectExported(Answer::Yes);
    press();
    EXPECT_EQ(opened.paths, QStringList());
    EXPECT_EQ(log(), QStringList{logRow(u"folder.xls"_s)});

    run(u"delete * from log"_s); // otherwise the export ends silently
    run(u"update setting set checkeduser=False"_s);
    ASSERT_TRUE(QFile::remove(path(u"template.xls"_s)));
    press();
    EXPECT_EQ(log(), QStringList());
}

TEST_F(ExportTest, previousMarksOldestAndNewestFirst) {
    addScore(ann, question[0], 1, today, 9, 9);              // the same day does not count
    addScore(ann, question[0], 1, today.addDays(-30), 0, 7); // a 0 is not looked up further back
    addScore(ann, question[0], 1, today.addDays(-60), 8, 8);
    addScore(ann, question[3], 1, today.addDays(-400), 5, 0);
    addScore(bob, question[3], 1, today.addDays(-1), 1, 1);
    run(wordsAsked + u"(3, 5, 7, '2024-01-10', 4), (3, 5, 7, '2024-02-25', 6)");
    for (const HistoryOrder order : {HistoryOrder::OldestFirst, HistoryOrder::NewestFirst}) {
        toGetTheLastScoreAndWeightage(findSurveyKey({u"Acme"_s, u"Ann"_s, u"05/03/2024"_s}), order);
        EXPECT_EQ(
            rows(u"select question, Parameter, Type, weightage, score from reportlinktable order by 1"_s),
            QStringList({u"On time?|Delivery|True||7"_s, u"Sturdy?|Quality|True|5|"_s,
                         u"What else?|Quality|False|6|"_s}));
    }
}

TEST_F(ExportTest, mailAndNoQuestions) {
    QStringList mails;
    const Replaced<mapi::hasClientHook> client([] { return true; });
    const Replaced<mapi::composeHook> composer([&](const mapi::Mail& mail) { mails << mail.attachmentPath; });
    press("cmdmail");
    EXPECT_EQ(mails, QStringList{path(name)});
    EXPECT_EQ(log(), QStringList{logRow(name)});
    expectOverwrite(Answer::No);
    press("cmdmail");
    EXPECT_EQ(mails.size(), 1);

    run(u"delete * from responquesindex"_s);
    for (const char* button : {"cmdmail", "cmdExport"})
        press(button);
}
} // namespace
