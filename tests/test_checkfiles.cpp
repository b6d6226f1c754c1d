// SPDX-License-Identifier: GPL-3.0-or-later
// The form that checks survey files before they are read.
#include "exchange/frmCheckFiles.h"
#include "exchange/frmCompareAnswers.h"
#include "exchange/frmReading.h"
#include "tests/support/checktest.h"
#include "tests/support/listview.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTableWidget>
#include <QUrl>

namespace {
/// The form with files of Ann (5 March) and Bob (4 April).
struct CheckFormTest : CheckTest {
    enum Column { Tick, File, Customer, Respondent, Date, Judgement };

    void SetUp() override {
        CheckTest::SetUp();
        addStored(bob, {2024, 4, 4}, {0});
        run(u"insert into log (custname, respname, respid, xlsfilename, sdate, surveyid) "
            "values ('Acme', 'Bob', 2, 'bob.xls', '2024-04-04', 2)"_s);
    }
    QString fillBob(int score) const {
        const Cells keys{
            {"I2", bob}, {"I3", QDate(2024, 4, 4)}, {"I5", 2}, {"B9", u"Respondent Name : Bob"_s}};
        return fill(u"bob.xls"_s, keys + Cells{{"C14", score}, {"I16", {}}, {"B16", {}}, {"B17", {}}});
    }
    static frmCheckFiles& form() { return frmCheckFiles::instance(); }
    static QTreeView& list() { return *control<QTreeView>(form(), "lsvFiles"); }
    static QString cell(int row, int column) { return list().model()->index(row, column).data().toString(); }
    /// The rows: "x" for a tick, "o" for a box without one, "-" for none; title; verdict.
    static QStringList shown() {
        QStringList rows;
        for (int row = 0; row < list().model()->rowCount(); ++row) {
            const QVariant tick = list().model()->index(row, Tick).data(Qt::CheckStateRole);
            rows << (!tick.isValid()               ? u"- "_s
                     : tick.toInt() == Qt::Checked ? u"x "_s
                                                   : u"o "_s) +
                        cell(row, File) + u' ' + cell(row, Judgement);
        }
        return rows;
    }
    static QString summary() { return control<QLabel>(form(), "lblSummary")->text(); }
    static void click(int row, int column = File, Qt::KeyboardModifiers modifiers = {}) {
        ::clickRow(list(), row, Qt::LeftButton, modifiers, column);
    }
    void add(const QStringList& paths) {
        picked = paths.join(u'\n');
        form().Show();
        press(form(), "cmdAddFiles");
    }
    /// Drops files and folders on a window; false if they are not taken.
    static bool drop(QWidget& window, const QList<QUrl>& urls) {
        QMimeData carried;
        carried.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        QDropEvent event({5, 5}, Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &event);
        QCoreApplication::processEvents();
        return enter.isAccepted() && event.isAccepted();
    }
};

TEST_F(CheckFormTest, filesAreTickedSortedAndJudgedAnew) {
    addScore(bob, question[0], 2, {2024, 4, 4}, 9, 1);
    add({fill(u"ann.xls"_s), fill(u"again.xls"_s), fillBob(3), fill(u"bad.xls"_s, {{"C14", 11}})});
    const QString twice = u" twice in this list"_s;
    const QString bad = u"- bad.xls mark outside 0 to 10"_s;
    EXPECT_EQ(shown(), (QStringList{u"- ann.xls"_s + twice, u"- again.xls"_s + twice,
                                    u"o bob.xls changes stored answers"_s, bad}));
    EXPECT_EQ(cell(0, 10), u"the same questionnaire as again.xls"_s);
    EXPECT_EQ(summary(), u"4 files: 0 ready, 0 identical, 1 changing, 3 faulty. 0 ticked."_s);
    messages.expect(u"Tick one or more files to import"_s, style::information);
    press(form(), "cmdImportTicked");

    clickHead(list(), Date);
    EXPECT_EQ(cell(3, File), u"bob.xls"_s) << "April is after March";
    clickHead(list(), File);
    click(0); // again.xls
    key(Qt::Key_Delete);
    EXPECT_EQ(shown(), (QStringList{u"x ann.xls ready"_s, bad, u"o bob.xls changes stored answers"_s}));
    shortcut(Qt::Key_A);
    key(Qt::Key_Space);
    EXPECT_EQ(summary(), u"3 files: 1 ready, 0 identical, 1 changing, 1 faulty. 2 ticked."_s);
    key(Qt::Key_Space);
    click(1, Tick); // has no box
    click(2);
    click(2, File, Qt::ControlModifier);
    key(Qt::Key_Space); // the row is current and not chosen
    EXPECT_EQ(shown(), (QStringList{u"o ann.xls ready"_s, bad, u"x bob.xls changes stored answers"_s}));
}

TEST_F(CheckFormTest, tickedFilesAreReadUnlessTheyHaveChanged) {
    add({fill(u"ann.xls"_s), fillBob(3)});
    EXPECT_EQ(shown(), (QStringList{u"x ann.xls ready"_s, u"x bob.xls ready"_s}));
    fillBob(4);
    messages.expect(u"bob.xls has changed since it was checked and was not read. Check it again."_s);
    messages.expect(u"Not read to the end:\r\nbob.xls"_s, style::information);
    messages.expect(u"Import Done...."_s, style::information);
    press(form(), "cmdImportTicked");
    EXPECT_EQ(rows(u"select respondentid, score from feedbackobjective"_s), QStringList{u"1|7"_s});
    EXPECT_EQ(value(u"select Status from log"_s), u"False"_s)
        << "the register is marked for a file that is read";
    EXPECT_EQ(shown(), (QStringList{u"x ann.xls read already, identical"_s, u"x bob.xls ready"_s}));
    messages.expect(u"Import Done...."_s, style::information);
    press(form(), "cmdImportTicked");
    EXPECT_EQ(rows(u"select respondentid, score from feedbackobjective"_s),
              (QStringList{u"1|7"_s, u"2|4"_s}));
    EXPECT_EQ(value(u"select Status from log"_s), u"True"_s);
    expectIdle();
}

TEST_F(CheckFormTest, aDoubleClickComparesTheAnswers) {
    addScore(ann, question[0], 1, today, 9, 8);
    add({fill(u"ann.xls"_s, {{"B17", u"Good"_s}, {"D16", 2}}), fill(u"bad.xls"_s, {{"D14", u"x"_s}})});
    click(1);
    messages.expect(u"The answers of this file cannot be compared: unreadable\r\nD14: Type mismatch"_s,
                    style::information);
    key(Qt::Key_Return);
    QStringList compared;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        frmCompareAnswers* dialog = frmCompareAnswers::loaded();
        if (!dialog || !dialog->isActiveWindow())
            return;
        compared = listed(*control<QTableWidget>(*dialog, "grdAnswers"));
        key(Qt::Key_Escape);
    });
    watch.start();
    click(0, Customer);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                       list().visualRect(list().model()->index(0, Customer)).center());
    watch.stop();
    const QStringList expected{u"On time?|Score 8, Weightage 9|Score 7, Weightage 9|changed"_s,
                               u"What else?|-|Good\nWeightage 2|new"_s};
    EXPECT_EQ(compared, expected);
    EXPECT_EQ(frmCompareAnswers::loaded(), nullptr) << "Esc closes it";
}

TEST_F(CheckFormTest, filesAndFoldersCanBeDropped) {
    const QUrl file = QUrl::fromLocalFile(fill(u"ann.xls"_s));
    const QString folder = path(u"returned"_s);
    ASSERT_TRUE(QDir().mkpath(folder + u"/older"_s));
    for (const QString& name :
         {u"~$a.xls"_s, u"template.xls"_s, u"note.txt"_s, u"older/c.xls"_s, u"B.XLSX"_s})
        writeFile(folder + u'/' + name, "no workbook");
    EXPECT_FALSE(drop(MDIMain::instance(), {QUrl(u"https://example.com/a.xls"_s)}));
    EXPECT_EQ(frmCheckFiles::loaded(), nullptr);

    frmReading& reading = show<frmReading>();
    const auto* lines = control<forms::ListBox>(reading, "lstXlsFiles");
    EXPECT_TRUE(drop(reading, {file}));
    EXPECT_TRUE(drop(reading, {file, QUrl::fromLocalFile(folder)}));
    EXPECT_EQ(lines->ListCount(), 2);
    EXPECT_EQ(lines->SelCount(), 2);
    press(reading, "cmdCheck");
    EXPECT_EQ(shown(), (QStringList{u"x ann.xls ready"_s, u"- B.XLSX unreadable"_s}));
    form().Unload();

    EXPECT_TRUE(drop(MDIMain::instance(), {file}));
    EXPECT_EQ(activeForm(), u"frmCheckFiles"_s);
    EXPECT_TRUE(drop(form(), {QUrl::fromLocalFile(folder), file}));
    EXPECT_EQ(shown(), (QStringList{u"x ann.xls ready"_s, u"- B.XLSX unreadable"_s}));
    form().Unload();

    Replaced<forms::openFolderHook> folderDialog{[&]() -> QString { return folder + u"/older"_s; }};
    form().Show();
    list().setFocus();
    shortcut(Qt::Key_C); // there is nothing to copy
    press(form(), "cmdAddFolder");
    EXPECT_EQ(shown(), QStringList{u"- c.xls unreadable"_s});
}

TEST_F(CheckFormTest, aCheckCanBeCancelled) {
    const QStringList files{fill(u"ann.xls"_s), fillBob(3), fill(u"bad.xls"_s)};
    cancelAt(u"Checking bob.xls"_s, [&] { add(files); });
    EXPECT_EQ(shown(), QStringList{u"x ann.xls ready"_s});
    EXPECT_EQ(summary(),
              u"1 file: 1 ready, 0 identical, 0 changing, 0 faulty. 1 ticked. Cancelled: 2 not checked."_s);
}
} // namespace
