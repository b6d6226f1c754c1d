// SPDX-License-Identifier: GPL-3.0-or-later
// A store of 2,000 customers and 1,000,000 answers in a file, and copied to a server that answers at once,
// and 1 ms later: the median of several runs and the round trips of one. The server is a private one; neither
// waits for the disk.
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "bench/bigstore.h"
#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "core/store/storecopy.h"
#include "exchange/files/answerexport.h"
#include "exchange/files/readingundo.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/ado/datasources.h"
#include "platform/ado/store.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/lists.h"
#include "platform/forms/msgbox.h"
#include "platform/tables/tablefile.h"
#include "reference/frmCustomer.h"
#include "survey/frmEditExistingSurvey.h"
#include "tests/support/privateserver.h"
#include "tests/support/relay.h"
#include "tests/support/surveyfile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>

#include <algorithm>
#include <cstdio>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr int customers = 2000;
constexpr int fileCount = 500;
constexpr int questionCount = 50;
const QDate newDay{2031, 1, 2}; // without answers

QByteArray scripts() {
    QByteArray all;
    for (const QString& name : {u"schema"_s, u"version2"_s, u"queries"_s}) {
        QFile script(QStringLiteral(GAUGEWELL_SOURCE) + u"/home/" + name + u".sql");
        static_cast<void>(script.open(QIODevice::ReadOnly));
        all += script.readAll() + '\n';
    }
    return all;
}

double milliseconds(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

/// The files of the first 500 customers, each of one respondent.
std::vector<ReturnedFile> makeFiles(const QTemporaryDir& home) {
    std::vector<ReturnedFile> files;
    SurveyFile file{.date = newDay, .questions = {}};
    int row = cellmap::firstRow;
    for (int questionid = 1; questionid <= questionCount; ++questionid) {
        file.questions.emplace_back(questionid, true);
        file.entered[u'D' + QString::number(row)] = 1 + questionid % 10;
        file.entered[u'C' + QString::number(row)] = 1 + questionid % 9;
        row += cellmap::blockRows(true);
    }
    for (int i = 1; i <= fileCount; ++i) {
        file.respondentid = i * 10 + 1;
        file.surveyid = i * 100 + 1;
        files.emplace_back(home.filePath(u"%1.xls"_s.arg(i)));
        file.saveAs(files.back().path);
    }
    return files;
}

template <class Control> Control* control(QWidget& form, const char* name) {
    return form.findChild<Control*>(QLatin1StringView(name));
}

void press(QWidget& form, const char* button) {
    control<QPushButton>(form, button)->click();
}

/// Other texts in all cells of a column.
void change(QWidget& form, const char* grid, int column) {
    static int turn = 0;
    ++turn;
    auto* cells = control<forms::MSHFlexGrid>(form, grid);
    for (int row = 1; row < cells->Rows(); ++row)
        cells->setTextMatrix(row, column, QString::number(1 + (row + turn) % 9));
}

template <class Form> Form& shown() {
    Form::instance().Show();
    return Form::instance();
}

template <class Form> void pickCustomer(Form& form, const char* list) {
    auto* names = control<forms::ComboBox>(form, list);
    names->setListIndex(names->findText(u"Customer %1"_s.arg(measured)));
}

class Measurement {
public:
    explicit Measurement(const Relay* network) : relay(network) {}

    /// `after` is not measured.
    void of(
        const char* work, int runs, const std::function<void()>& command,
        const std::function<void()>& after = [] {}) const {
        std::vector<double> times;
        double first = 0;
        long trips = 0;
        for (int i = 0; i <= runs; ++i) {
            const long before = relay ? relay->roundTrips() : 0;
            QElapsedTimer timer;
            timer.start();
            command();
            i == 0 ? first = milliseconds(timer) : times.emplace_back(milliseconds(timer));
            trips = relay ? relay->roundTrips() - before : 0;
            after();
        }
        std::sort(times.begin(), times.end());
        std::printf("  %-34s %8.1f %8.1f %6ld\n", work, first, times[times.size() / 2], trips);
        std::fflush(stdout);
    }

private:
    const Relay* relay;
};

void measureForms(const Measurement& measurement) {
    frmSatisfactionIndex& index = shown<frmSatisfactionIndex>();
    pickCustomer(index, "cmdCustomerName");
    control<forms::DTPicker>(index, "dtFrom")->setValue({2020, 1, 1});
    control<forms::DTPicker>(index, "dtTo")->setValue({2029, 12, 31});
    control<forms::ListBox>(index, "lstParameter")->selectAll();
    measurement.of("index, 10 parameters, 20 dates", 15, [&] { press(index, "cmdView"); });
    frmSatisfactionIndex::unload();

    frmPerformanceMatrix& matrix = shown<frmPerformanceMatrix>();
    pickCustomer(matrix, "cmdCustomerName");
    control<forms::ListBox>(matrix, "lstSurveyDates")->setListIndex(0);
    measurement.of("matrix of one date", 15, [&] { press(matrix, "cmdView"); });
    frmPerformanceMatrix::unload();

    frmFeedBackObj& feedback = shown<frmFeedBackObj>();
    pickCustomer(feedback, "cmbCusName");
    measurement.of("showing 50 answers", 15, [&] { feedback.tofillscoreandweightage(); });
    measurement.of("saving 50 answers", 15, [&] {
        change(feedback, "grdDtls", 2);
        feedback.toSaveDtls();
    });
    frmFeedBackObj::unload();

    frmEditExistingSurvey& editor = shown<frmEditExistingSurvey>();
    pickCustomer(editor, "cmbCustomer");
    measurement.of("saving 50 questions", 15, [&] { editor.toSaveParamAndQuest(); });
    frmEditExistingSurvey::unload();

    measurement.of("opening 2,000 customers", 5, [] {
        shown<frmCustomer>();
        frmCustomer::unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

void measureReading(const Measurement& measurement, const std::vector<ReturnedFile>& files) {
    const auto read = [&] {
        const Reading reading = readSurveyFiles(files);
        if (!reading.bad.isEmpty())
            std::printf("%lld files were not read\n", static_cast<long long>(reading.bad.size()));
    };
    const auto forget = [] { run(u"delete * from feedbackobjective where surveydate=#01/02/2031#"_s); };
    read(); // with the copy before
    forget();
    measurement.of("reading 500 files, new answers", 3, read, forget);
    read();
    measurement.of("reading 500 files, replacing", 3, read);
    forget();
    read();
    const auto undo = [] {
        ado::Recordset last(u"select max(readingid) as latest from reading where undone is null"_s, *cnnMain);
        undoReading(last["latest"].Value().toInt(), QDateTime::currentDateTime());
    };
    measurement.of("undoing the reading of new answers", 3, undo, read);
    forget();
}

void measureExport(const Measurement& measurement) {
    ExportChoice choice{std::vector<int>(200), {2020, 1, 1}, {2029, 12, 31}};
    std::iota(choice.custids.begin(), choice.custids.end(), measured + 1);
    measurement.of("exporting 100,000 answers, .csv", 3, [&] {
        const auto file = tables::openTableFile(homeDirectory() + u"/answers.csv", exportHeadings());
        exportAnswers(choice, *file, [](const QString&, bool) { return true; });
        file->finish();
    });
}

void measure(const char* name, const Relay* relay, const std::vector<ReturnedFile>& files) {
    toOpenConnection();
    if (cnnMain->IsFile())
        run(u"pragma synchronous = off"_s);
    std::printf("%s\n", name);
    const Measurement measurement(relay);
    measurement.of("one question to the store", 101, [] { run(u"select 1"_s); });
    measureForms(measurement);
    measureExport(measurement);
    measureReading(measurement, files);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    cnnMain.reset();
}

void useServer(const QString& socket) {
    ado::SQLConfigDataSource(
        ado::AddSystemSource, u"server"_s + QChar(),
        QStringList{u"DSN=gwl"_s, u"SOCKET="_s + socket, u"DATABASE=tally"_s, u"UID=member"_s, {}}.join(
            QChar()));
}

/// Makes the store on the server.
void copyTo(const PrivateServer& host, const QString& socket) {
    ado::Connection server;
    server.ConnectionString = host.connection({});
    server.Open();
    server.Execute(u"set global innodb_buffer_pool_size=536870912"_s); // as a server of a department has
    server.Execute(u"drop database if exists tally"_s);
    server.Execute(u"create database tally"_s);
    server.ConnectionString = u"SOCKET="_s + socket + u";DATABASE=tally;UID=member;PWD=kvtwpa";
    server.Open();
    ado::runScript(server, scripts());
    QElapsedTimer timer;
    timer.start();
    copyAllRows(*cnnMain, server);
    std::printf("copying the store to the server: %.1f s\n", milliseconds(timer) / 1000);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GAUGEWELL_SOURCE "/tests/data/screen.json");
    const QApplication application(argc, argv);
    forms::messageHook = [](const forms::Message& message) {
        std::printf("message: %s\n", qPrintable(message.text));
        return forms::Answer::Ok;
    };
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), home.filePath(u"Tallywell.mdb"_s));
    setHomeDirectory(home.path());
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    buildStore(argc > 1 ? std::atoi(argv[1]) : customers);
    const std::vector<ReturnedFile> files = makeFiles(home);
    PrivateServer host;
    const Relay near(host.socket());
    const Relay far(host.socket(), std::chrono::microseconds(500));
    copyTo(host, near.socket());
    copyTo(host, far.socket());
    std::printf("milliseconds: the first run, the median of the others, round trips\n");
    measure("file", nullptr, files);
    useServer(near.socket());
    measure("server", &near, files);
    useServer(far.socket());
    measure("server, 1 ms away", &far, files);
    MDIMain::destroy();
    return 0;
}
