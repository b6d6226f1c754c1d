// SPDX-License-Identifier: GPL-3.0-or-later
// A batch of returned files is checked, imported, undone and imported again.
#include "exchange/frmCheckFiles.h"
#include "exchange/frmReading.h"
#include "exchange/frmReadingRuns.h"
#include "exchange/surveyexport.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

namespace {
constexpr int goodFiles = 20;

struct ReturnBatch : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        copyHomeFile(u"template.xls"_s);
        ASSERT_TRUE(QDir(home()).mkdir(u"returned"_s));
        for (int i = 0; i < 29; ++i)
            respondents << addRespondent(acme, u"Person %1"_s.arg(i));
        for (const int respondent : respondents)
            addStored(respondent, today, {0, 1, 4});
    }
    QString returned(const QString& name) const { return path(u"returned/"_s + name); }
    QString wordsOf(int i) const { return u"Réponse \"%1\",\nligne 2"_s.arg(i); }
    int scoreOf(int i) const { return 1 + i % 9; }
    /// The exported and filled file of a respondent, moved to the folder of returned files; its name.
    QString fill(int i, const Cells& changed = {}) {
        const QString name =
            exportSurvey({.survey = {u"Acme"_s, u"Person %1"_s.arg(i), ado::toText(today)}}).fileName;
        const excel::Workbook book = excel::Application().Workbooks().Open(path(name));
        const excel::Worksheet sheet = book.Worksheets(u"Sheet1"_s);
        sheet.Unprotect(u"kvtwpa"_s);
        for (const auto& [address, value] :
             Cells{{"C14", scoreOf(i)}, {"D14", 5}, {"B19", wordsOf(i)}} + changed)
            sheet.Range(QString::fromLatin1(address)).setValue(value);
        sheet.Protect(u"kvtwpa"_s);
        book.Save();
        EXPECT_TRUE(QFile::rename(path(name), returned(name)));
        return name;
    }
    /// Lets LibreOffice save files in another format in place of the former.
    void resave(const QStringList& names, const QString& type) {
        QStringList files;
        for (const QString& name : names)
            files << returned(name);
        convertByOffice(type, files, path(u"saved"_s));
        for (const QString& name : names) {
            const QString saved = name.chopped(3) + type;
            EXPECT_TRUE(QFile::remove(returned(name)));
            EXPECT_TRUE(QFile::rename(path(u"saved/"_s + saved), returned(saved)));
        }
    }
    void makeGoodFiles();
    void makeOtherFiles();
    /// All rows but those of the readings, without the keys of the answers: these are new after an import.
    static QStringList store() {
        static const QRegularExpression answerKey(u"^(feedback[a-z]+)\\|\\d+"_s);
        QStringList rows = storeRows(*cnnMain).filter(QRegularExpression(u"^(?!reading)"_s));
        rows.replaceInStrings(answerKey, u"\\1"_s);
        rows.sort();
        return rows;
    }
    /// The rows that the import is to change.
    QStringList meant(QStringList rows) const {
        const auto answer = [&](const QString& table, int i, int number, const QString& content,
                                int weightage) {
            const QString keys = u"feedback%1|%2|%3|1|05/03/2024|"_s.arg(
                table, QString::number(respondents[i]), QString::number(question[std::size_t(number)]));
            rows.removeIf([&](const QString& row) { return row.startsWith(keys); });
            rows << keys + content + u'|' + QString::number(weightage);
        };
        QList<int> read(goodFiles);
        std::iota(read.begin(), read.end(), 0);
        for (const int i : read + QList<int>{changing, identical}) {
            answer(u"objective"_s, i, 0, QString::number(scoreOf(i)), 5);
            answer(u"objective"_s, i, 1, u"0"_s, 0);
            answer(u"descriptive"_s, i, 4, wordsOf(i), 0);
            rows.replaceInStrings(QRegularExpression(u"^(log\\|Acme\\|Person %1\\|.*)\\|False$"_s.arg(i)),
                                  u"\\1|True"_s);
        }
        rows.sort();
        return rows;
    }
    static QTreeView& list() { return *control<QTreeView>(frmCheckFiles::instance(), "lsvFiles"); }
    static QString cell(int row, int column) { return list().model()->index(row, column).data().toString(); }
    static void tick(int row) {
        list().scrollTo(list().model()->index(row, 1));
        ::clickRow(list(), row, Qt::LeftButton, {}, 1);
        key(Qt::Key_Space);
    }
    void checkThem() {
        const QString folder = returned({});
        picked = folder + QDir(folder).entryList(QDir::Files, QDir::Name).join(u'\n' + folder);
        press(show<frmReading>(), "cmdBrowse");
        press(frmReading::instance(), "cmdCheck");
    }
    void importThem() {
        messages.expectBeginning(u"Read as it stands, but worth a look:\r\n"_s, style::information);
        messages.expect(u"Import Done...."_s, style::information);
        QTest::keyClick(&list(), Qt::Key_I, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([this] { return messages.left() == 0; }));
        expectIdle();
    }

    QList<int> respondents;
    std::map<QString, QString> expected; ///< verdicts other than "ready", by file
    const int changing = 27, identical = 28;
};

/// Six formats by three programs.
void ReturnBatch::makeGoodFiles() {
    QStringList names;
    for (int i = 0; i < goodFiles; ++i)
        names << fill(i);
    resave(names.sliced(4, 4), u"xlsx"_s);
    resave(names.sliced(8, 4), u"ods"_s);
    resave(names.sliced(12, 2), u"xlsm"_s);
    resave(names.sliced(14, 2), u"xls"_s);
    for (const int i : {16, 17, 18, 19}) {
        const QString saved = names[i].chopped(3) + (i < 18 ? u"xlsx"_s : u"ods"_s);
        outputOf(u"ssconvert"_s, {returned(names[i]), returned(saved)});
        QFile::remove(returned(names[i]));
    }
}

void ReturnBatch::makeOtherFiles() {
    writeFile(returned(u"page.xls"_s), "<html><table><tr><td>7</td></tr></table></html>");
    writeFile(returned(u"list.xls"_s), "question;mark\n1;7\n");
    ASSERT_TRUE(QFile::copy(path(u"template.xls"_s), returned(u"accounts.xls"_s)));
    const QString twice = fill(25);
    ASSERT_TRUE(QFile::copy(returned(twice), returned(u"again.xls"_s)));
    expected = {{u"page.xls"_s, u"unreadable"_s},
                {u"list.xls"_s, u"unreadable"_s},
                {u"accounts.xls"_s, u"no survey file"_s},
                {fill(20, {{"I5", 99}}), u"unknown survey"_s},
                {fill(21, {{"B14", u"In time?"_s}}), u"foreign"_s},
                {fill(22, {{"I2", respondents[23]}}), u"foreign"_s},
                {fill(24, {{"C14", 11}}), u"mark outside 0 to 10"_s},
                {twice, u"twice in this list"_s},
                {u"again.xls"_s, u"twice in this list"_s}};
    addScore(respondents[changing], question[0], 1, today, 4, 2);
    expected[fill(changing)] = u"changes stored answers"_s;
    addScore(respondents[identical], question[0], 1, today, 5, scoreOf(identical));
    addScore(respondents[identical], question[1], 1, today, 0, 0);
    addWords(respondents[identical], question[4], 1, today, wordsOf(identical));
    expected[fill(identical)] = u"read already, identical"_s;
}

TEST_F(ReturnBatch, isCheckedImportedUndoneAndImportedAgain) {
    makeGoodFiles();
    makeOtherFiles();
    const QStringList before = store();
    checkThem();
    EXPECT_EQ(store(), before);
    ASSERT_EQ(list().model()->rowCount(), 31);
    int changingRow = -1;
    for (int row = 0; row < 31; ++row) {
        const QString name = cell(row, 1);
        const auto found = expected.find(name);
        EXPECT_EQ(cell(row, 5), found == expected.end() ? u"ready"_s : found->second)
            << name << ": " << cell(row, 10);
        if (cell(row, 5).startsWith(u"changes"))
            changingRow = row;
    }
    const auto* summary = control<QLabel>(frmCheckFiles::instance(), "lblSummary");
    EXPECT_EQ(summary->text(), u"31 files: 20 ready, 1 identical, 1 changing, 9 faulty. 21 ticked."_s);
    tick(changingRow);
    importThem();
    const QStringList after = meant(before);
    EXPECT_EQ(store(), after);
    EXPECT_EQ(summary->text(), u"31 files: 0 ready, 22 identical, 0 changing, 9 faulty. 22 ticked."_s);

    MDIMain::instance().findChild<QAction*>(u"mnuReadings"_s)->trigger();
    messages.expectTitledBeginning(u"Undo the reading of"_s,
                                   style::yesNo + style::information + style::secondButton, Answer::Yes);
    QTest::keyClick(&frmReadingRuns::instance(), Qt::Key_U, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return messages.left() == 0; }));
    EXPECT_EQ(store(), before);

    frmCheckFiles::unload();
    checkThem();
    tick(changingRow);
    importThem();
    EXPECT_EQ(store(), after);
}
} // namespace
