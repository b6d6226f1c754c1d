// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "exchange/cellmap.h"
#include "exchange/frmSetting.h"
#include "exchange/lastmarks.h"
#include "platform/crystal/crystalreport.h"
#include "platform/crystal/previewwindow.h"
#include "platform/excel/application.h"
#include "platform/mapi/client.h"
#include "tests/support/surveytest.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRadioButton>

using namespace Qt::StringLiterals;
using forms::Answer;

namespace {

const QString templateSource = QStringLiteral(GAUGEWELL_SOURCE "/home/template.xls");
const QString title = u"Gaugewell v2.1"_s;

QByteArray run(const QString& script, const QStringList& arguments) {
    QProcess process;
    process.start(u"/usr/bin/python3"_s,
                  QStringList{QStringLiteral(GAUGEWELL_SOURCE "/tests/") + script} + arguments);
    EXPECT_TRUE(process.waitForFinished(300'000)) << script.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

QJsonObject seenByXlrd(const QString& path) {
    return QJsonDocument::fromJson(run(u"excel_judge.py"_s, {path})).object();
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

/// Ann's questionnaire of today is to be exported: Delivery: On time? (0); Quality: Sturdy? (3), What else?
/// (4).
class ExportTest : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        strCompanyName = u"Larkmoor"_s;
        ASSERT_TRUE(QFile::copy(templateSource, file(u"template.xls"_s)));
        addStored(ann, today, {3, 0, 4});
        excel::Application::setFileShower([this](const QString& path) { opened << path; });
        forms::saveFileSeat = [this](const forms::CommonDialog& dialog) {
            EXPECT_EQ(dialog.Filter, u"*.xls|*.xls|*.xls"_s);
            EXPECT_EQ(dialog.Flags, 4);
            EXPECT_FALSE(typed.isEmpty()) << "the dialog came once too often";
            return typed.isEmpty() ? QString() : typed.takeFirst();
        };
        crystal::previewSeat = [this](const auto& report, const QString& windowTitle, int state) {
            previews << windowTitle + u' ' + QString::number(state) + (report ? u"" : u"!");
        };
    }
    void TearDown() override {
        EXPECT_TRUE(typed.isEmpty());
        strCompanyName.clear();
        excel::Application::setFileShower({});
        forms::saveFileSeat = [](const forms::CommonDialog&) { return QString(); };
        crystal::previewSeat = crystal::PreviewWindow::show;
        SurveyTest::TearDown();
    }

    QString file(const QString& name) const { return home() + u'/' + name; }
    static void userNames() { StoreTest::run(u"update setting set checkeduser=True"_s); }
    void expectView(Answer answer = Answer::No) {
        messages.expect(u"Survey File Exported...Do you want to view the file? "_s, 68, title, answer);
    }
    void expectOverwrite(Answer answer) {
        messages.expect(name() + u" file apready exist for Respondent - Ann for Survey Date - "
                                 u"05/03/2024....Do you want to overwrite?\r\n",
                        68, title, answer);
    }
    /// Gives what the form then holds of the wish to mail.
    bool press(const char* button = "cmdExport") {
        ::press(open(), button);
        EXPECT_EQ(messages.left(), 0);
        EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), QString());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        const bool mails = frmNewSurvey::instance().blnMail;
        frmNewSurvey::unload();
        return mails;
    }
    static QString surveyid() { return toGetSurveyID(u"05/03/2024"_s, u"Acme"_s); }
    /// The name that the program makes.
    QString name() const { return surveyid() + QString::number(acme) + QString::number(ann) + u".xls"; }
    QStringList log() const {
        return rows(u"select respname, xlsfilename, respid, sdate, surveyid, Status from log"_s);
    }
    QString logged(const QString& fileName, bool read = false) const {
        return u"Ann|%1|%2|05/03/2024|%3|%4"_s.arg(fileName).arg(ann).arg(surveyid(),
                                                                          read ? u"True"_s : u"False"_s);
    }
    QString cell(const QString& fileName, const QString& address) const {
        return excel::Application()
            .Workbooks()
            .Open(file(fileName))
            .Worksheets(u"Sheet1"_s)
            .Range(address)
            .Value()
            .text();
    }

    QStringList typed;    // into the save dialog, one answer a time
    QStringList opened;   // by the desktop's program
    QStringList previews; // title and state of the reports
};

TEST_F(ExportTest, theFileAsAnotherProgramSeesIt) {
    addScore(ann, question[0], 1, today.addDays(-1), 9, 7);
    expectView(Answer::Yes);
    press();
    EXPECT_EQ(opened, QStringList{file(name())});
    EXPECT_EQ(log(), QStringList{logged(name())});

    const QJsonObject seen = seenByXlrd(file(name()));
    EXPECT_EQ(seen[u"protection"][u"12"].toString(), u"0001"_s);
    EXPECT_EQ(seen[u"protection"][u"13"].toString(), u"DDD3"_s); // of the password
    std::vector<cellmap::Cell> cells = cellmap::headCells({.organisation = u"Larkmoor"_s,
                                                           .customer = u"Acme"_s,
                                                           .respondent = u"Ann"_s,
                                                           .custid = QString::number(acme),
                                                           .respondentid = QString::number(ann),
                                                           .surveyid = surveyid(),
                                                           .surveyDate = today,
                                                           .exportDate = today});
    const auto block = [&](int row, int number, const char* text, bool isScore, int score, int weightage,
                           const char* parameter) {
        const auto questionid = QString::number(question[static_cast<std::size_t>(number)]);
        for (const cellmap::Cell& cell :
             cellmap::blockCells(row, {questionid, QString::fromLatin1(text), isScore, score, weightage,
                                       QString::fromLatin1(parameter), *parameter != 0}))
            cells.push_back(cell);
    };
    block(14, 0, "On time?", true, 7, 9, "Delivery");
    block(16, 3, "Sturdy?", true, 0, 0, "Quality");
    block(18, 4, "What else?", false, 0, 0, "");
    cells.push_back(cellmap::questionCountCell(3));
    const std::map<cellmap::Colour, QString> rgb = {{cellmap::Colour::None, {}},
                                                    {cellmap::Colour::Black, u"000000"_s},
                                                    {cellmap::Colour::Red, u"FF0000"_s},
                                                    {cellmap::Colour::DarkBlue, u"000080"_s},
                                                    {cellmap::Colour::Blue, u"0000FF"_s}};
    for (const cellmap::Cell& cell : cells) {
        const QString address = QChar(u'@' + cell.place.column) + QString::number(cell.place.row);
        SCOPED_TRACE(address.toStdString());
        const QJsonObject found = seen[u"cells"][address].toObject();
        const QJsonValue value = found[u"value"];
        const QString text = value.isDouble() ? QString::number(value.toDouble()) : value.toString();
        EXPECT_EQ(text, !cell.value                    ? QString()
                        : cell.value->date().isValid() ? u"2024-03-05 00:00:00"_s
                                                       : cell.value->text());
        EXPECT_EQ(found[u"locked"].toBool(), cell.lock != cellmap::Lock::Unlocked);
        EXPECT_EQ(found[u"wrapped"].toBool(), cell.wrapped);
        if (cell.font != cellmap::Colour::None) {
            EXPECT_EQ(found[u"font"].toString(), rgb.at(cell.font));
        }
        for (const QJsonValue& border : found[u"borders"].toArray())
            EXPECT_EQ(border.toString(), rgb.at(cell.border));
    }
}

TEST_F(ExportTest, anExistingFileIsWrittenOverInPlace) {
    expectView();
    press();
    const QString answer = u"All is fine as it is. "_s.repeated(20);
    ::run(u"fill_survey.py"_s,
          {file(name()), u"{\"C14\": 7, \"D14\": 9, \"B19\": \""_s + answer + u"\", \"D18\": 3}"});
    const QJsonObject heights = seenByXlrd(file(name()))[u"heights"].toObject();
    EXPECT_GT(heights[u"18"].toInt(), 2 * heights[u"17"].toInt()) << "the box grows with the answer";
    StoreTest::run(u"update log set Status=True"_s);
    StoreTest::run(u"delete * from responquesindex where questionid="_s + QString::number(question[3]));
    StoreTest::run(u"delete * from reportlinktable"_s);
    const QByteArray filled = contentOf(file(name()));

    expectOverwrite(Answer::No);
    press();
    EXPECT_EQ(contentOf(file(name())), filled);
    EXPECT_EQ(log(), QStringList{logged(name(), true)});
    EXPECT_EQ(rows(u"select question from reportlinktable"_s), QStringList());

    userNames(); // the register's name wins
    expectOverwrite(Answer::Yes);
    expectView();
    press();
    EXPECT_EQ(log(), QStringList{logged(name())});
    const std::vector<std::pair<const char*, QString>> cells = {
        {"I4", u"2"_s},
        {"C14", {}},
        {"D14", {}},
        {"I14", QString::number(question[0])},
        {"I16", QString::number(question[4])},
        {"B17", u"Type your Answer here"_s},
        {"B19", {}},
        {"D18", {}},
        {"I18", QString::number(question[4])}}; // left behind
    for (const auto& [address, text] : cells)
        EXPECT_EQ(cell(name(), QLatin1StringView(address)), text) << address;
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(ExportTest, whoNamesTheFilesIsSet) {
    const auto choose = [](Qt::Key direction) {
        MDIMain::instance().findChild<QAction*>(u"mnuSettings"_s)->trigger();
        QTest::keyClick(QApplication::focusWidget(), direction);
        return &frmSetting::instance();
    };
    const auto chosen = [] {
        return control<QRadioButton>(frmSetting::instance(), "opnUserDefined")->isChecked();
    };
    EXPECT_FALSE(chosen());
    choose(Qt::Key_Up);
    EXPECT_TRUE(chosen());
    key(Qt::Key_Escape);
    EXPECT_EQ(frmSetting::loaded(), nullptr);
    EXPECT_EQ(value(u"select checkeduser from setting"_s), u"False"_s);
    ::press(*choose(Qt::Key_Up), "cmdOK");
    EXPECT_EQ(frmSetting::loaded(), nullptr);
    EXPECT_EQ(value(u"select checkeduser from setting"_s), u"True"_s);
    frmNewSurvey& editor = open();
    EXPECT_TRUE(editor.blnSetting);
    ::press(*choose(Qt::Key_Down), "cmdOK");
    EXPECT_EQ(value(u"select checkeduser from setting"_s), u"False"_s);
    editor.Show();
    EXPECT_FALSE(editor.blnSetting);
}

TEST_F(ExportTest, theUserNamesTheFile) {
    userNames();
    add(u"log"_s, {{"custname", u"Other"_s}, {"respname", u"Ann"_s}, {"xlsfilename", u"taken.xls"_s}});
    const QByteArray blank = contentOf(file(u"template.xls"_s));
    const auto expectDuplicate = [this] {
        messages.expect(u"Duplicate Survey File...Cannot Save Duplicate Survey File..."_s, 16, title);
    };
    const auto cancels = [&](const QString& answer) {
        typed << u"/elsewhere/TAKEN.xls"_s << answer;
        expectDuplicate();
        messages.expect(u"Survey File Export cancelled..."_s, 64, title);
        press();
        EXPECT_EQ(rows(u"select xlsfilename from log"_s), QStringList{u"taken.xls"_s});
        EXPECT_EQ(QDir(home()).entryList({u"*.xls"_s}), QStringList{u"template.xls"_s});
        EXPECT_EQ(rows(u"select question from reportlinktable"_s).size(), 3);
    };
    cancels({});
    cancels(u"/elsewhere/  "_s);

    typed << u"/elsewhere/Template.XLS"_s << u"/elsewhere/Tallywell.mdb"_s << u"/elsewhere/Ann's Écho v1.2"_s;
    expectDuplicate();
    expectDuplicate();
    expectView(Answer::Yes);
    press();
    const QString chosen = u"Ann\u2019s Écho v1.2"_s;
    EXPECT_EQ(log().value(1), logged(chosen));
    EXPECT_EQ(cell(chosen, u"B8"_s), u"Customer Name : Acme"_s);
    EXPECT_EQ(opened, QStringList{file(chosen)});

    QFile::remove(file(chosen)); // written anew under the register's name, without a question
    expectView();
    press();
    EXPECT_TRUE(QFile::exists(file(chosen)));
    EXPECT_EQ(log().size(), 2);
    EXPECT_EQ(contentOf(file(u"template.xls"_s)), blank);
}

TEST_F(ExportTest, failures) {
    const QByteArray blank = contentOf(file(u"template.xls"_s));
    ASSERT_TRUE(QDir(home()).mkpath(u"folder.xls/full"_s));
    userNames(); // once the dialog has been shown, a step that fails is left out
    typed << u"folder.xls"_s;
    expectView(Answer::Yes);
    press();
    EXPECT_EQ(opened, QStringList());
    EXPECT_EQ(log(), QStringList{logged(u"folder.xls"_s)});
    EXPECT_EQ(contentOf(file(u"template.xls"_s)), blank);

    StoreTest::run(u"delete * from log"_s); // otherwise the export ends without a word
    StoreTest::run(u"update setting set checkeduser=False"_s);
    ASSERT_TRUE(QFile::remove(file(u"template.xls"_s)));
    press();
    EXPECT_EQ(log(), QStringList());
    EXPECT_EQ(rows(u"select question from reportlinktable"_s).size(), 3);

    runRaw(u"drop table log"_s); // the store's own failures are told: no name, no old row, no new row
    ASSERT_TRUE(QFile::copy(templateSource, file(u"template.xls"_s)));
    for (int procedure = 0; procedure < 3; ++procedure)
        messages.expectBeginning(u"Error : "_s);
    expectView();
    press();
}

TEST_F(ExportTest, bothRoadsToTheLastMarks) {
    const std::vector<std::tuple<int, int, int, int>> answers = {
        // question, days before, weightage, score
        {0, 0, 9, 9},
        {0, 30, 0, 7},
        {0, 60, 8, 8}, // the day itself is no history, a 0 there is not looked for further back
        {3, 400, 5, 0}};
    for (const auto& [number, days, weightage, score] : answers)
        addScore(ann, question[static_cast<std::size_t>(number)], 1, today.addDays(-days), weightage, score);
    addScore(bob, question[3], 1, today.addDays(-1), 1, 1);
    for (const auto& [days, weightage] : std::vector<std::pair<int, int>>{{50, 4}, {10, 6}})
        add(u"feedbackdescriptive"_s, {{"respondentid", ann},
                                       {"questionid", question[4]},
                                       {"surveyid", 1},
                                       {"surveydate", today.addDays(-days)},
                                       {"weightage", weightage}});
    for (const HistoryRoad road : {HistoryRoad::OldestFirst, HistoryRoad::NewestFirst}) {
        toGetTheLastScoreAndWeightage({u"Acme"_s, u"Ann"_s, u"05/03/2024"_s}, road);
        EXPECT_EQ(
            rows(
                u"select question, Parameter, Type, weightage, score from reportlinktable order by questionid"_s),
            QStringList({u"On time?|Delivery|True||7"_s, u"Sturdy?|Quality|True|5|"_s,
                         u"What else?|Quality|False|6|"_s}));
    }
}

TEST_F(ExportTest, mailAndReport) {
    QStringList mails;
    mapi::hasClientSeat = [] { return true; };
    mapi::composeSeat = [&](const mapi::Mail& mail) { mails << mail.attachmentPath; };
    EXPECT_FALSE(press("cmdmail"));
    EXPECT_EQ(mails, QStringList{file(name())});
    EXPECT_EQ(log(), QStringList{logged(name())});
    expectOverwrite(Answer::No);
    EXPECT_FALSE(press("cmdmail"));
    EXPECT_EQ(mails.size(), 1);

    StoreTest::run(u"delete * from reportlinktable"_s);
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(GAUGEWELL_SOURCE "/home/rptrating.rpt"), file(u"rptrating.rpt"_s)));
    press("cmdPrint");
    EXPECT_EQ(previews, QStringList{u"Gaugewell v2.1 Survey Report 2"_s});
    EXPECT_EQ(rows(u"select question from reportlinktable"_s).size(), 3);

    StoreTest::run(u"delete * from responquesindex"_s);
    for (const char* button : {"cmdmail", "cmdExport"})
        press(button);
    messages.expect(
        u"No records selected to Print for Date - 05/03/2024.....Kindly Add Question(s) and proceed"_s,
        524352, title);
    press("cmdPrint");
}
