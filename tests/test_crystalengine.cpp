// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/connection.h"
#include "platform/ado/store.h"
#include "platform/crystal/crystalreport.h"
#include "platform/crystal/output.h"
#include "platform/crystal/pageview.h"
#include "platform/crystal/previewwindow.h"
#include "platform/crystal/reporttable.h"
#include "tests/support/pdftext.h"
#include "tests/support/replaced.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QPrinter>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

namespace {
/// A store of one table and a layout for it; the preview is captured instead of shown.
struct CrystalTest : ::testing::Test {
    void SetUp() override {
        makeStore("insert into visit values ('Ann', '2002-03-15', 7, -1, 'first'),"
                  " ('Zoë', '2002-03-16', 0, 0, 'second'), ('ann', '2002-03-17', 8.5, null, 'third')");
        report.Password = u"\nsecret"_s;
        report.DataFiles(0) = directory.filePath(u"store.mdb"_s);
        report.ReportFileName = directory.filePath(u"visit.rpt"_s);
        report.Formulas(0) = u"CompanyName='O'Hara & Sons'"_s;
    }

    void makeStore(const QByteArray& content) const {
        ado::createStore(directory.filePath(u"store.mdb"_s),
                         "create table visit (guest TEXT collate UNICODE_CI, day DATE, mark SINGLE,"
                         " paid YESNO, note TEXT collate UNICODE_CI);" +
                             content,
                         u"secret"_s);
    }
    void writeLayout(const QString& inside, const QString& table = u"visit"_s) const {
        writeFile(report.ReportFileName,
                  u"<report title='Visits' table='%1' organisation='CompanyName' empty='Nobody came.'>\n"
                  "%2\n</report>\n"_s.arg(table, inside)
                      .toUtf8());
    }
    QString failure() {
        return failureOf([this] { report.setAction(crystal::RunReport); });
    }
    QStringList pages() {
        EXPECT_EQ(failure(), QString());
        if (!run)
            return {};
        const QString pdf = directory.filePath(u"out.pdf"_s);
        crystal::savePdf(*run, pdf);
        return pdfPages(pdf);
    }

    QTemporaryDir directory;
    crystal::CrystalReport report;
    std::shared_ptr<const crystal::Report> run;
    Replaced<crystal::previewHook> preview{[this](const auto& shown, const QString&, int) { run = shown; }};
};

const QString guestColumn = u"<column field='guest' width='1' heading='Guest'/>"_s;

TEST_F(CrystalTest, layoutErrorsAreReportedWithFileAndLine) {
    const std::pair<std::function<void()>, QString> cases[] = {
        {[&] { report.Password = u"\nother"_s; }, u"store.mdb: Not a valid password."_s},
        {[&] { report.DataFiles(0) += u"x"_s; }, u"Could not find the database file"_s},
        {[&] { report.Formulas(0) = u"companyname='A'"_s; }, u"but the report was given 'companyname'"_s},
        {[&] { report.SelectionFormula = u"{visit.gast}='A'"_s; }, u"no field 'gast'"_s},
        {[&] { report.SelectionFormula = u"{visit.guest}='O'Brien'"_s; }, u"'Brien'': 'and' is expected"_s},
        {[&] { report.SelectionFormula = u"{visit.guest}='x' or {visit.note}='y'"_s; },
         u"'and' is expected"_s},
        {[&] { report.SelectionFormula = u"{visit.guest}='x"_s; }, u"a closing apostrophe is expected"_s},
        {[&] { report.SelectionFormula = u"{visit.day}=date(2002,15,03)"_s; },
         u"'2002,15,03' is not a date"_s},
        {[&] { writeLayout(guestColumn, u"visits"_s); }, u"no table or saved query 'visits'"_s},
        {[&] { writeLayout(u"<column field='guest' width='1'>"_s); }, u"visit.rpt, line 3: "_s},
        {[&] { writeLayout(u"\n\n<column field='gast' width='1'/>"_s); }, u"line 4: "_s},
    };
    for (const auto& [change, sentence] : cases) {
        const crystal::CrystalReport before = report;
        writeLayout(guestColumn);
        change();
        EXPECT_TRUE(failure().contains(sentence)) << failure();
        report = before;
    }
    EXPECT_EQ(run, nullptr);
}

TEST_F(CrystalTest, recordsAreChosenGroupedAndShownByTheLayout) {
    writeLayout(u"<value label='Newest' field='day' format='date' take='largest'/>"
                "<group field='guest' label='Guest:' count='1 visit|%n visits'/>"
                "<column field='day' width='2' format='date' heading='Day'/>"
                "<column field='mark' width='2' format='number' decimals='1' zero='none' mean='yes'/>"
                "<column field='paid' width='2' format='yesno' yes='paid' no='open'/>"_s);
    expectInOrder(pages().value(0),
                  {u"O'Hara & Sons"_s, u"Visits"_s, u"Newest"_s, u"17/03/2002"_s, u"Day"_s, u"Guest: Ann"_s,
                   u"2 visits"_s, u"15/03/2002 7.0 paid"_s, u"17/03/2002 8.5 open"_s, u"Mean 7.75"_s,
                   u"Guest: Zoë"_s, u"1 visit"_s, u"16/03/2002 none open"_s,
                   QDate::currentDate().toString(u"'Printed' dd/MM/yyyy"_s), u"Page 1 of 1"_s});

    report.SelectionFormula =
        u"{visit.guest} = ['ANN'] and {Visit.Day}>=date(2002,03,16)and {visit.day}<=date(2002,03,17)"_s;
    const QString text = pages().value(0);
    expectInOrder(text, {u"Guest: ann"_s, u"1 visit"_s, u"17/03/2002 8.5 open"_s, u"Mean 8.50"_s});
    EXPECT_FALSE(text.contains(u"Zoë"_s)) << text;

    writeLayout(u"<value label='Guest' field='guest'/><column field='day' width='1' heading='Day'/>"_s);
    report.SelectionFormula = u"{visit.guest} = ['Zoë and {x.y}= ']and {visit.day}=date(2002,3,5)"_s;
    expectInOrder(pages().value(0), {u"Guest Zoë and {x.y}="_s, u"Nobody came."_s, u"Page 1 of 1"_s});
    report.SelectionFormula = u"{visit.guest} = [' Ann']"_s;
    expectInOrder(pages().value(0), {u"Nobody came."_s});
}

TEST_F(CrystalTest, headingsRepeatOnEveryPageAndLongTextContinues) {
    QStringList words;
    for (int i = 0; i < 4000; ++i)
        words << u"w%1."_s.arg(i);
    QString values = u"('Ann', '"_s + words.join(u' ') + u"')";
    for (int i = 0; i < 120; ++i) {
        words << u"row%1."_s.arg(i);
        values += u", ('Bo', '"_s + words.last() + u"')";
    }
    makeStore("insert into visit (guest, note) values " + values.toUtf8());
    writeLayout(
        u"<page paper='A5'/><group field='guest'/><column field='note' width='1' heading='Remark'/>"_s);
    const QStringList all = pages();
    ASSERT_EQ(all.size(), run->pageCount());
    ASSERT_GT(all.size(), 8);
    for (qsizetype i = 0; i < all.size(); ++i)
        expectInOrder(all[i], {u"Visits"_s, u"Remark"_s, u"Page %1 of %2"_s.arg(i + 1).arg(all.size())});
    EXPECT_TRUE(all[1].contains(u"Ann (continued)"_s));
    EXPECT_TRUE(all.last().contains(u"Bo (continued)"_s));
    expectInOrder(all.join(u' '), words);
}

TEST_F(CrystalTest, readsWithoutChangingTheDatabase) {
    writeLayout(guestColumn);
    ado::Connection connection;
    connection.OpenReadOnly(report.DataFiles(0), u"secret"_s);
    EXPECT_THROW(connection.Execute(u"delete from visit"_s), Failure);
    ASSERT_TRUE(QFile::setPermissions(report.DataFiles(0), QFile::ReadOwner));
    EXPECT_EQ(failure(), QString());
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files), (QStringList{u"store.mdb"_s, u"visit.rpt"_s}));
}

TEST_F(CrystalTest, aTableHasTheGroupsAndTheValuesOfItsRows) {
    writeLayout(
        u"<group field='guest' label='Guest:'/><column field='day' format='date' width='1' heading='Day'/>"
        "<column field='mark' format='number' decimals='2' zero='none' width='1' heading='Mark' mean='yes'/>"_s);
    ASSERT_EQ(failure(), QString());
    tables::Table table = crystal::tableOf(*run);
    EXPECT_EQ(table.rows[0][1], QVariant(QDate(2002, 3, 15)));
    EXPECT_EQ(tables::tabSeparated(table).toStdString(), "Guest\tDay\tMark\nAnn\t15/03/2002\t7\n"
                                                         "Ann\t17/03/2002\t8.5\nZoë\t16/03/2002\tnone");
}

TEST_F(CrystalTest, thePreviewTurnsPagesPrintsAndSaves) {
    makeStore("insert into visit (guest) with recursive n(i) as (select 1 union all select i + 1 from n "
              "where i < 5000) select 'Guest' || i from n");
    writeLayout(guestColumn);
    QElapsedTimer timer;
    timer.start();
    const Replaced<crystal::previewHook> real(crystal::PreviewWindow::show);
    ASSERT_EQ(failure(), QString());
    EXPECT_LT(timer.elapsed(), 2000);
    QPointer<QMainWindow> window = qobject_cast<QMainWindow*>(QApplication::topLevelWidgets().value(0));
    ASSERT_TRUE(window);
    const auto press = [&](const char* action) {
        window->findChild<QAction*>(QLatin1StringView(action))->trigger();
    };

    const auto* box = window->findChild<QSpinBox*>(u"page"_s);
    const int last = box->maximum();
    ASSERT_GT(last, 3);
    QTest::keyClick(window->findChild<crystal::PageView*>(), Qt::Key_PageDown);
    EXPECT_EQ(box->value(), 2);

    QString saved = directory.filePath(u"saved.pdf"_s);
    const Replaced<crystal::pdfFileHook> file([&](QWidget*, const QString&) { return saved; });
    press("save");
    const QStringList savedPages = pdfPages(saved);
    EXPECT_EQ(savedPages.size(), last);
    const QString printed = directory.filePath(u"printed.pdf"_s);
    const Replaced<crystal::printerHook> dialog([&](QWidget*, QPrinter& printer) {
        printer.setOutputFileName(printed);
        printer.setFromTo(2, 3);
        return true;
    });
    press("print");
    EXPECT_EQ(pdfPages(printed).join(u'\n'), savedPages.mid(1, 2).join(u'\n'));
    saved = directory.filePath(u"no/such.pdf"_s);
    press("save");
    EXPECT_TRUE(window->statusBar()->currentMessage().contains(u"no/such.pdf: The PDF cannot be written"_s));
    press("copyTable");
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(u"Guest\nGuest1\n"));
    const auto* read = QAccessible::queryAccessibleInterface(window->findChild<crystal::PageView*>());
    EXPECT_EQ(read->child(0)->text(QAccessible::Name), u"Guest"_s);
    EXPECT_EQ(read->child(1)->text(QAccessible::Name), u"Guest1"_s);
    press("close");
}
} // namespace
