// SPDX-License-Identifier: GPL-3.0-or-later
// A whole survey cycle by keys and clicks only: an empty store, survey files saved by LibreOffice, analyses
// and their reports, with a restart in between.
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "core/Main.h"
#include "exchange/files/cellmap.h"
#include "exchange/frmReading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/chart/mschart.h"
#include "platform/excel/application.h"
#include "platform/forms/treeview.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmPasteSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/gridform.h"
#include "tests/support/reporttest.h"

namespace {
const QStringList parameters{u"Delivery"_s, u"Price"_s, u"Service"_s};
const QStringList dates{u"15/03/2024"_s, u"16/06/2024"_s};
constexpr int scored = 3; // questions of a parameter; the one after them is Descriptive
constexpr int people = 3; // of a customer

QString questionText(int parameter, int number) {
    return parameters[parameter] + u' ' + (number < scored ? QString::number(number + 1) : u"in words"_s) +
           u'?';
}

/// What a respondent enters: weightage and score. Each group's weightages are 2, 4 and 6.
std::pair<int, int> marksOf(int person, int date, int parameter, int number) {
    return {2 * (1 + (number + person) % scored), 2 * (1 + (person + 2 * date + parameter + number) % 5)};
}

void typeRow(const QStringList& cells) {
    for (const QString& cell : cells) {
        type(cell);
        key(Qt::Key_Return);
    }
}

void enterDate(QWidget& form, const char* picker, const QString& text) {
    control<QWidget>(form, picker)->setFocus(Qt::TabFocusReason); // selects the text, as Tab does
    type(text);
    key(Qt::Key_Tab);
}

/// Triggers a menu entry by its access keys.
void choose(const char* menuName, Qt::Key menuKey, Qt::Key entryKey) {
    auto* menu = control<QMenu>(MDIMain::instance(), menuName);
    QTest::keyClick(&MDIMain::instance(), menuKey, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return menu->isVisible(); }));
    QTest::keyClick(menu, entryKey);
}

void typeCustomers() {
    shortcut(Qt::Key_U);
    typeRow({u"Acme"_s, u"1 High Street"_s, u"555"_s, u"post@acme.example"_s});
    typeRow({u"Bolt's Garage"_s, u""_s, u""_s, u""_s});
    frmCustomer& form = frmCustomer::instance();
    const EditedGrid customers(form, "grdCustomerDtls", "txtCustomerDtls");
    const EditedGrid respondents(form, "grdRespondentDtls", "txtRespondentDtls");
    customers.click(1, 1);
    respondents.click(1, 1);
    for (const QString& name : {u"Ann"_s, u"Bob"_s, u"Zoë"_s})
        typeRow({name, u"Buyer"_s, name + u"@example.org"});
}

void typeCatalogue() {
    shortcut(Qt::Key_P);
    typeRow(parameters);
    frmParameter& form = frmParameter::instance();
    const EditedGrid catalogue(form, "grdParameterDtls", "txtParameterDtls");
    const EditedGrid questions(form, "grdQuestionDtls", "txtQuestionDtls");
    for (int parameter = 0; parameter < parameters.size(); ++parameter) {
        catalogue.click(parameter + 1, 1);
        questions.click(1, 1);
        for (int number = 0; number < scored; ++number)
            typeRow({questionText(parameter, number), u"s"_s});
        typeRow({questionText(parameter, scored)});
        type(u"d"_s);
        press(form, "cmdSaveQuestion");
    }
    key(Qt::Key_Escape);
}

void composeAll() {
    auto* tree = control<forms::TreeView>(frmNewSurvey::instance(), "trvParameter");
    tree->expandAll();
    for (int i = 0; i < parameters.size() * (scored + 1); ++i) {
        const QTreeWidgetItem* node = tree->topLevelItem(i / (scored + 1))->child(i % (scored + 1));
        tree->scrollToItem(node);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
        keyOn(frmNewSurvey::instance(), "trvParameter", Qt::Key_Return);
    }
}

struct SurveyCycleTest : ReportTest {
    void SetUp() override {
        ReportTest::SetUp();
        copyHomeFile(u"template.xls"_s);
    }
    /// Composes Ann's first questionnaire; copies the others from it.
    void composeFor(int person, int date) {
        shortcut(Qt::Key_N);
        frmSelectSurvey& selection = frmSelectSurvey::instance();
        clickEntry(selection, "lstRespondent", person);
        enterDate(selection, "dtSDate", dates[date]);
        if (person == 0 && date == 0) {
            press(selection, "cmdBlankSurvey");
            composeAll();
        } else {
            QTimer::singleShot(0, &selection, [] { press(frmPasteSurvey::instance(), "cmdPaste"); });
            press(selection, "cmdExistingSurvey");
            MDIMain::instance().activateWindow(); // as a window manager does when a dialog closes
            ASSERT_TRUE(QTest::qWaitForWindowActive(&MDIMain::instance()));
        }
        EXPECT_EQ(control<forms::MSHFlexGrid>(frmNewSurvey::instance(), "grdParamAndQuest")->Rows(), 14);
        exportFile();
    }

    void exportFile() {
        messages.expectExported();
        press(frmNewSurvey::instance(), "cmdExport");
        expectIdle();
        files << path(rows(u"select xlsfilename from log"_s).last());
        key(Qt::Key_Escape);
    }
    /// Fills the files in and saves them in LibreOffice; finds the cells by the questions' texts.
    void fillFiles() {
        ASSERT_TRUE(QDir(home()).mkdir(u"filled"_s));
        QStringList filled;
        for (int i = 0; i < files.size(); ++i) {
            const excel::Workbook book = excel::Application().Workbooks().Open(files[i]);
            const excel::Worksheet sheet = book.Worksheets(cellmap::sheetName.toString());
            for (int row = cellmap::firstRow; row < 60; ++row) {
                const QString text = sheet.Cells(row, cellmap::column::question).Value().text();
                const int parameter = static_cast<int>(parameters.indexOf(text.section(u' ', 0, 0)));
                if (parameter < 0)
                    continue;
                const int digit = text.at(text.size() - 2).digitValue();
                const int number = digit > 0 ? digit - 1 : scored;
                const auto [weightage, score] = marksOf(i % people, i / people, parameter, number);
                sheet.Cells(row, cellmap::column::weightage).setValue(weightage);
                if (number < scored)
                    sheet.Cells(row, cellmap::column::score).setValue(score);
                else
                    sheet.Cells(row + 1, cellmap::column::question)
                        .setValue(QString(u"It’s fine, "_s + parameters[parameter]));
            }
            filled << path(u"filled/"_s + files[i].section(u'/', -1));
            book.SaveAs(filled.last());
        }
        convertByOffice(u"xls"_s, filled, home());
    }
    /// Reads the files of the first date one by one, the others at once.
    void readFiles() {
        shortcut(Qt::Key_O);
        frmFeedBackObj& feedback = frmFeedBackObj::instance();
        for (int person = 0; person < people; ++person) {
            clickEntry(feedback, "lstRespname", person);
            clickEntry(feedback, "lstSurveyDates", 0);
            press(feedback, "cmdRead");
            expectIdle();
        }
        key(Qt::Key_Escape);
        shortcut(Qt::Key_R);
        picked = files.mid(people).join(u'\n');
        frmReading& reading = frmReading::instance();
        press(reading, "cmdBrowse");
        control<QWidget>(reading, "lstXlsFiles")->setFocus();
        shortcut(Qt::Key_A);
        messages.expect(u"Import Done...."_s, style::information);
        press(reading, "cmdImport");
        expectIdle();
        key(Qt::Key_Escape);
    }

    void showIndex() {
        choose("mnuAnalysis", Qt::Key_A, Qt::Key_I);
        frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
        clickEntry(form, "lstParameter", 0);
        clickEntry(form, "lstParameter", 2, Qt::ShiftModifier);
        enterDate(form, "dtFrom", u"01/01/2024"_s);
        press(form, "cmdView");
        auto* drawn = control<chart::MSChart>(form, "mschart");
        ASSERT_EQ(drawn->RowCount(), 2);
        ASSERT_EQ(drawn->ColumnCount(), 3);
        // The sums of the nine rounded ratings of Service, Price and Delivery.
        const double ratings[2][3] = {{70, 62, 54}, {41, 43, 70}};
        for (int date = 0; date < 2; ++date) {
            for (int column = 0; column < 3; ++column)
                EXPECT_NEAR(drawn->GetData(date + 1, column + 1).value_or(0), ratings[date][column] / 9,
                            1e-6);
        }
        EXPECT_EQ(print(form, u"Survey Report"_s).count(dates[1]), 4); // in the head and in the rows
        key(Qt::Key_Escape);
    }

    void showMatrix() {
        choose("mnuAnalysis", Qt::Key_A, Qt::Key_P);
        frmPerformanceMatrix& form = frmPerformanceMatrix::instance();
        clickEntry(form, "lstSurveyDates", 1);
        press(form, "cmdView");
        expectInOrder(print(form, u"Performance Matrix Report"_s),
                      {u"Service 4.00 5.11"_s, u"Price 4.00 5.33"_s, u"Delivery 4.00 6.67"_s}); // by score
        key(Qt::Key_Escape);
    }

    void restart() {
        const QStringList answers = rows(u"select * from feedbackobjective order by feedbackobjid"_s);
        const bool isFile = cnnMain->IsFile();
        const Replaced<endHook> stays([] {});
        shortcut(Qt::Key_Q);
        EXPECT_EQ(cnnMain, nullptr);
        MDIMain::destroy();
        ASSERT_TRUE(!isFile || toCreateDSN(u"gwl"_s, strDatabasePath));
        toOpenConnection();
        MDIMain::instance().show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&MDIMain::instance()));
        EXPECT_EQ(rows(u"select * from feedbackobjective order by feedbackobjid"_s), answers);
        EXPECT_EQ(rows(u"select custname, Address, telno, email from customer order by custid"_s),
                  (QStringList{u"Acme|1 High Street|555|post@acme.example"_s, u"Bolt’s Garage| ||"_s}));
    }

    QStringList files; // by date and person
};

TEST_F(SurveyCycleTest, fromAnEmptyStoreToTheAnalysesAndBackAfterARestart) {
    typeCustomers();
    typeCatalogue();
    for (int date = 0; date < 2; ++date) {
        for (int person = 0; person < people; ++person)
            ASSERT_NO_FATAL_FAILURE(composeFor(person, date));
    }
    ASSERT_EQ(QSet<QString>(files.begin(), files.end()).size(), 6);
    fillFiles();
    readFiles();
    ASSERT_NO_FATAL_FAILURE(restart());
    ASSERT_NO_FATAL_FAILURE(showIndex());
    showMatrix();
}
} // namespace
