// SPDX-License-Identifier: GPL-3.0-or-later
// grab HOME FOLDER [dark] [WIDTHxHEIGHT]: saves pictures of every form, the main window of that size and some
// help topics, with the store in HOME, to FOLDER. Accepts QT_SCALE_FACTOR and -style like any Qt program.
#include "analysis/frmCompareGroups.h"
#include "analysis/frmDateToDate.h"
#include "analysis/frmDtoDActionPlan.h"
#include "analysis/frmDtoDSatisfactionOverview.h"
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "analysis/frmTargets.h"
#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/frmChangedMeanwhile.h"
#include "core/base/gblGlobal.h"
#include "core/frmSignIn.h"
#include "core/frmSplash.h"
#include "exchange/frmCheckFiles.h"
#include "exchange/frmCompareAnswers.h"
#include "exchange/frmLogDetails.h"
#include "exchange/frmMessage.h"
#include "exchange/frmReading.h"
#include "exchange/frmSetting.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/desktop/helpwindow.h"
#include "platform/forms/clock.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/lists.h"
#include "platform/forms/msgbox.h"
#include "reference/frmSegments.h"
#include "tools/allforms.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QDir folder;

bool save(QWidget& window, const QString& name) {
    QTest::qWait(100); // delayed layouts
    return window.grab().save(folder.filePath(name + u".png"));
}

QPalette darkPalette() {
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    return palette;
}

bool grabForm(const AnyForm& any) {
    forms::Form& form = any.open();
    const bool saved = save(form.isWindow() ? form : static_cast<QWidget&>(MDIMain::instance()),
                            QString::fromLatin1(any.name));
    any.close();
    return saved;
}

/// Shows a list of files; the first is in the register, so its details are shown.
bool grabReading() {
    forms::openFileHook = [](const forms::CommonDialog&) -> QString {
        return homeDirectory() + u"/111.xls\n" + homeDirectory() + u"/Returned by Ann in March.xls";
    };
    frmReading& form = frmReading::instance();
    form.Show();
    form.findChild<QAbstractButton*>(u"cmdBrowse"_s)->click();
    form.findChild<forms::ListBox*>(u"lstXlsFiles"_s)->setListIndex(0);
    const bool saved = save(MDIMain::instance(), u"frmReading"_s);
    frmReading::unload();
    return saved;
}

/// Checks the survey files of the home directory and compares the answers of the first.
bool grabCheck() {
    forms::openFolderHook = homeDirectory;
    frmCheckFiles& form = frmCheckFiles::instance();
    form.Show();
    form.findChild<QAbstractButton*>(u"cmdAddFolder"_s)->click();
    bool saved = save(MDIMain::instance(), u"frmCheckFiles"_s);
    QTimer::singleShot(1000, &form, [&saved] {
        saved = save(frmCompareAnswers::instance(), u"frmCompareAnswers"_s) && saved;
        frmCompareAnswers::unload();
    });
    auto* list = form.findChild<QTreeView*>(u"lsvFiles"_s);
    constexpr int verdict = 5; // the column; files that can be compared come first
    list->sortByColumn(verdict, Qt::DescendingOrder);
    Q_EMIT list->doubleClicked(list->model()->index(0, verdict));
    frmCheckFiles::unload();
    return saved;
}

/// Two people's changes of a customer.
bool grabChanged() {
    bool saved = false;
    QTimer::singleShot(0, &MDIMain::instance(), [&saved] {
        saved = save(frmChangedMeanwhile::instance(), u"frmChangedMeanwhile"_s);
        frmChangedMeanwhile::unload();
    });
    frmChangedMeanwhile::ask({u"Customer Name: Aldermere Foods"_s,
                              {{u"Customer Address"_s, u"1 Mill Lane, Aldermere"_s,
                                u"7 Station Road, Aldermere"_s, u"1 Mill Lane, Aldermere AL2 9QT"_s},
                               {u"Tel.No"_s, u"01632 960 118"_s, u"01632 960 200"_s, u"01632 960 119"_s}}});
    return saved;
}

/// Asking again for the password of a server's store, and the choice of that store.
bool grabServer() {
    const StoreChoice choice{.server = u"db1.larkmoor.example, db2.larkmoor.example"_s,
                             .database = u"tally"_s,
                             .user = u"ann"_s,
                             .authority = u"/etc/ssl/larkmoor.pem"_s};
    bool saved = false;
    QTimer::singleShot(0, &MDIMain::instance(), [&saved] {
        saved = save(frmSignIn::instance(), u"frmSignIn"_s);
        frmSignIn::unload();
    });
    frmSignIn::ask(choice, u"The database server does not accept the user 'ann' or the password."_s);
    useStore({choice, {}});
    frmStore::instance().Show();
    saved = save(MDIMain::instance(), u"frmStore-server"_s) && saved;
    frmStore::unload();
    useStore({});
    return saved;
}

/// A message with a title that is longer than its text, one whose text is aligned to the right, and a
/// calendar.
bool grabPopups() {
    bool saved = true;
    int number = 0;
    for (const int style : {forms::style::information, forms::style::okCancel | forms::style::rightAligned}) {
        QTimer::singleShot(0, &MDIMain::instance(), [&] {
            QWidget* box = QApplication::activeModalWidget();
            saved = save(*box, u"message-%1"_s.arg(++number)) && saved;
            box->close();
        });
        forms::msgBox(u"Nothing was found.\r\nTwo lines."_s, style,
                      u"Customer Satisfaction Survey of Larkmoor Quality Services"_s);
    }
    frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
    form.Show();
    form.findChild<forms::DTPicker*>(u"dtFrom"_s)->showPopup();
    saved = save(*QApplication::activePopupWidget(), u"calendar"_s) && saved;
    QApplication::activePopupWidget()->close();
    frmSatisfactionIndex::unload();
    return saved;
}

/// The questionnaire editor for the first customer's first respondent.
bool grabEditor() {
    frmSelectSurvey& selection = frmSelectSurvey::instance();
    selection.Show();
    blnSurveyPasted = true; // opens an existing questionnaire without asking
    selection.dtSDate()->setValue({2026, 3, 31});
    selection.cmdBlankSurvey();
    frmNewSurvey::instance().findChild<QTreeWidget*>()->expandAll();
    const bool saved = save(MDIMain::instance(), u"frmNewSurvey"_s);
    frmNewSurvey::unload();
    frmSelectSurvey::unload();
    return saved;
}

/// The customer of many respondents, some of whom have not answered.
void chooseLargeCustomer(forms::Form& form) {
    auto* customers = form.findChild<forms::ComboBox*>(u"cmdCustomerName"_s);
    customers->setListIndex(customers->ListCount() - 1);
}

bool grabIndex() {
    frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
    form.Show();
    form.findChild<QListWidget*>(u"lstParameter"_s)->selectAll();
    form.findChild<QAbstractButton*>(u"cmdView"_s)->click();
    bool saved = save(MDIMain::instance(), u"frmSatisfactionIndex-chart"_s);
    chooseLargeCustomer(form);
    form.findChild<QListWidget*>(u"lstParameter"_s)->selectAll();
    form.findChild<QAbstractButton*>(u"cmdView"_s)->click();
    auto* basis = form.findChild<QAbstractButton*>(u"chkBasis"_s);
    basis->click();
    saved = save(MDIMain::instance(), u"frmSatisfactionIndex-basis"_s) && saved;
    auto* targets = form.findChild<QAbstractButton*>(u"chkTargets"_s);
    targets->click();
    saved = save(MDIMain::instance(), u"frmSatisfactionIndex-basis-targets"_s) && saved;
    basis->click();
    saved = save(MDIMain::instance(), u"frmSatisfactionIndex-targets"_s) && saved;
    targets->click();
    frmSatisfactionIndex::unload();
    return saved;
}

bool grabTargets() {
    frmTargets& form = frmTargets::instance();
    form.Show();
    form.findChild<forms::ComboBox*>(u"cmbCustomer"_s)->setListIndex(1);
    const bool saved = save(MDIMain::instance(), u"frmTargets-customer"_s);
    frmTargets::unload();
    return saved;
}

/// The last survey with all reading aids.
bool grabAids(frmPerformanceMatrix& form) {
    const auto click = [&form] {
        for (const auto* box : {"chkNames", "chkGaps", "chkDiagonal"})
            form.findChild<QAbstractButton*>(QLatin1StringView(box))->click();
    };
    const auto choose = [&form](const char* box, int index) {
        auto* list = form.findChild<QComboBox*>(QLatin1StringView(box));
        list->setCurrentIndex(index);
        Q_EMIT list->activated(index);
    };
    click();
    choose("cmbCrossHair", 1);
    choose("cmbCompared", 1);
    const bool saved = save(MDIMain::instance(), u"frmPerformanceMatrix-aids"_s);
    click(); // as at first
    choose("cmbCrossHair", 0);
    return saved;
}

bool grabMatrix() {
    frmPerformanceMatrix& form = frmPerformanceMatrix::instance();
    form.Show();
    form.findChild<forms::ListBox*>(u"lstSurveyDates"_s)->setListIndex(0);
    bool saved = save(MDIMain::instance(), u"frmPerformanceMatrix-chart"_s);
    chooseLargeCustomer(form);
    auto* dates = form.findChild<forms::ListBox*>(u"lstSurveyDates"_s);
    dates->setListIndex(dates->ListCount() - 1);
    auto* basis = form.findChild<QAbstractButton*>(u"chkBasis"_s);
    basis->click();
    saved = save(MDIMain::instance(), u"frmPerformanceMatrix-basis"_s) && saved;
    basis->click();
    saved = grabAids(form) && saved;
    frmPerformanceMatrix::unload();
    return saved;
}

/// Roles with a change that is not saved, and two regions compared.
bool grabSegments() {
    frmSegments& form = frmSegments::instance();
    form.Show();
    form.findChild<forms::ComboBox*>(u"cboKind"_s)->setListIndex(2);
    auto* list = form.findChild<QTreeView*>(u"lsvRows"_s);
    list->setCurrentIndex(list->model()->index(4, 0));
    form.findChild<forms::ComboBox*>(u"cboGroup"_s)->setEditText(u"Management"_s);
    form.findChild<QAbstractButton*>(u"cmdSet"_s)->click();
    bool saved = save(MDIMain::instance(), u"frmSegments-changed"_s);
    const auto asking =
        std::exchange(forms::messageHook, [](const forms::Message&) { return forms::Answer::Yes; });
    frmSegments::unload();
    forms::messageHook = asking;

    frmCompareGroups& compare = frmCompareGroups::instance();
    compare.Show();
    auto* view = compare.findChild<QAbstractButton*>(u"cmdView"_s);
    view->click();
    saved = save(MDIMain::instance(), u"frmCompareGroups-index"_s) && saved;
    compare.findChild<forms::ComboBox*>(u"cboView"_s)->setListIndex(1);
    view->click();
    saved = save(MDIMain::instance(), u"frmCompareGroups-matrix"_s) && saved;
    auto* basis = compare.findChild<QAbstractButton*>(u"chkBasis"_s);
    basis->click();
    saved = save(MDIMain::instance(), u"frmCompareGroups-basis"_s) && saved;
    basis->click();
    frmCompareGroups::unload();
    return saved;
}

/// The responses, and the dialogs of their buttons.
bool grabResponses() {
    frmResponses& form = frmResponses::instance();
    form.Show();
    form.findChild<forms::DTPicker*>(u"dtFrom"_s)->setValue({2026, 6, 30});
    auto* list = form.findChild<QTreeView*>(u"lsvResponses"_s);
    constexpr int state = 6; // the column; those who are late come first
    list->sortByColumn(state, Qt::DescendingOrder);
    list->model()->setData(list->model()->index(0, 0), Qt::Checked, Qt::CheckStateRole);
    bool saved = save(MDIMain::instance(), u"frmResponses"_s);
    const auto grabDialog = [&](const char* button, auto& dialog, const QString& name) {
        QTimer::singleShot(0, &form, [&dialog, &saved, name] {
            saved = save(dialog(), name) && saved;
            dialog().Unload();
        });
        form.findChild<QAbstractButton*>(QLatin1StringView(button))->click();
    };
    grabDialog("cmdHandedOver", frmHandOver::instance, u"frmHandOver"_s);
    grabDialog("cmdDue", frmHandOver::instance, u"frmHandOver-due"_s);
    grabDialog("cmdSettings", frmResponseSettings::instance, u"frmResponseSettings"_s);
    frmResponses::unload();
    return saved;
}

/// What is stored about a respondent, and the dialog that erases it.
bool grabPerson() {
    frmPerson& form = frmPerson::instance();
    form.Show();
    form.findChild<forms::ComboBox*>(u"cmbRespondent"_s)->setListIndex(0);
    bool saved = save(MDIMain::instance(), u"frmPerson"_s);
    QTimer::singleShot(0, &form, [&saved] {
        saved = save(frmErase::instance(), u"frmErase"_s) && saved;
        frmErase::unload();
    });
    form.findChild<QAbstractButton*>(u"cmdErase"_s)->click();
    frmPerson::unload();
    return saved;
}

/// Makes a copy of the store in HOME.
bool grabUpkeep() {
    const auto pressed = [](forms::Form& form, const QStringList& buttons, const QString& name) {
        form.Show();
        for (const QString& button : buttons)
            form.findChild<QAbstractButton*>(button)->click();
        const bool saved = save(MDIMain::instance(), name);
        form.Unload();
        return saved;
    };
    return pressed(frmCleanUp::instance(), {u"cmdSearch"_s}, u"frmCleanUp"_s) &&
           pressed(frmBackups::instance(), {u"cmdBackUp"_s, u"cmdCheck"_s}, u"frmBackups"_s);
}

bool grabSearch() {
    frmSearch& form = frmSearch::instance();
    form.Show();
    form.findChild<QLineEdit*>(u"txtKeyword"_s)->setText(u"delivery quality call"_s);
    form.findChild<QAbstractButton*>(u"cmdOK"_s)->click();
    const bool saved = save(MDIMain::instance(), u"frmSearch"_s);
    frmSearch::unload();
    return saved;
}

bool grabHelp(int context) {
    if (!desktop::HelpWindow::show(homeDirectory() + u"/GWL HELP 2.1.HLP", context))
        return false;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto help = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->objectName() == u"HelpWindow";
    });
    return save(**help, u"help-"_s + QString::number(context));
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3 || !QDir().mkpath(arguments[2])) {
        std::fputs("usage: grab HOME FOLDER [dark] [WIDTHxHEIGHT]\n", stderr);
        return 2;
    }
    if (arguments.contains(u"dark"_s))
        QApplication::setPalette(darkPalette());
    qputenv("XDG_CONFIG_HOME", (arguments[1] + u"/config"_s).toUtf8()); // not the user's own
    forms::todayHook = [] { return QDate(2026, 7, 2); };                // the same pictures in every run
    setHomeDirectory(arguments[1]);
    folder.setPath(arguments[2]);
    strCompanyName = u"Larkmoor Quality Services"_s;
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    frmSplash::instance().Show();
    bool saved = save(frmSplash::instance(), u"frmSplash"_s);
    frmSplash::unload();
    const QStringList size = arguments.mid(3).value(arguments.size() - 4).split(u'x');
    MDIMain::instance().resize(size.value(1).toInt() > 0 ? QSize(size[0].toInt(), size[1].toInt())
                                                         : QSize(1280, 690));
    MDIMain::instance().show();
    saved = save(MDIMain::instance(), u"MDIMain"_s) && saved;
    for (const AnyForm& form : allForms())
        saved = grabForm(form) && saved;
    // Again with data or a chart.
    for (bool (*grabAgain)() : {grabReading, grabCheck, grabChanged, grabPopups, grabServer, grabSegments,
                                grabResponses, grabPerson, grabUpkeep, grabEditor, grabIndex, grabTargets,
                                grabMatrix, grabSearch}) // last: its note in the status bar stays
        saved = grabAgain() && saved;
    for (const int context : {0, 201, 12, 217, 218, 219}) // the contents, a long topic, some with tables
        saved = grabHelp(context) && saved;
    MDIMain::destroy();
    return saved ? 0 : 1;
}
