// SPDX-License-Identifier: GPL-3.0-or-later
// crowd [SECONDS [PROGRAMS]]: that many programs read survey files, save and view at once, all on one store:
// first a file, then a server, then one 1 ms away. A save gives one of five customers a new telephone number,
// so that each confirmed number must follow another one. Fails when two follow the same, when the last is not
// stored, or when a file that was read is not in the record of readings.
#include "analysis/frmSatisfactionIndex.h"
#include "bench/bigstore.h"
#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/changedrow.h"
#include "core/base/gblGlobal.h"
#include "core/store/storecopy.h"
#include "exchange/reading.h"
#include "platform/ado/datasources.h"
#include "platform/ado/store.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/lists.h"
#include "platform/forms/msgbox.h"
#include "reference/frmCustomer.h"
#include "tests/support/privateserver.h"
#include "tests/support/relay.h"
#include "tests/support/surveyfile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <list>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr int customers = 100;
constexpr int edited = 5; ///< customers with a counted number
constexpr int fileCount = 20;

template <class Control> Control* control(QWidget& form, const char* name) {
    return form.findChild<Control*>(QLatin1StringView(name));
}

bool openStore(const QString& home, const QString& source) {
    qputenv("XDG_CONFIG_HOME", (home + u"/config").toUtf8());
    setHomeDirectory(home);
    strDatabasePath = home + u"/Tallywell.mdb";
    ado::SQLConfigDataSource(ado::AddSystemSource, u"any"_s + QChar(),
                             QString(u"DSN=gwl;"_s + source + u';').replace(u';', QChar()));
    toOpenConnection();
    return cnnMain->State() == ado::StateOpen;
}

/// One of the programs: works until the time is over and prints what it has done.
class Member {
public:
    int work(int seconds) {
        forms::messageHook = [this](const forms::Message& message) {
            ++refused;
            std::cerr << message.text.toStdString() << '\n';
            return forms::Answer::Ok;
        };
        changedHook = [this](const ChangedRow&) {
            ++asked;
            return Keep::Both;
        };
        frmCustomer::instance().Show();
        showIndex();
        readFile(); // with the copy before the first
        std::cout << "ready" << std::endl;
        std::cin.get();
        filesRead = refused = asked = 0;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 1000LL * seconds) {
            switch (QRandomGenerator::global()->bounded(5)) {
            case 0:
            case 1:
                time("saving", [this, row = editedRow()] { save(row); });
                break;
            case 2:
            case 3:
                time("viewing", [] { showIndex(); });
                break;
            default:
                time("reading", [this] { readFile(); });
            }
        }
        std::cout << "files " << filesRead << "\nrefused " << refused << "\nasked " << asked << std::endl;
        return 0;
    }

private:
    template <class Work> static void time(const char* word, const Work& work) {
        QElapsedTimer timer;
        timer.start();
        work();
        std::cout << word << ' ' << double(timer.nsecsElapsed()) / 1e6 << '\n';
    }

    /// Reads the customers and types a new number for one of them, as slowly as a person who types while
    /// others save.
    int editedRow() {
        const int row = 1 + QRandomGenerator::global()->bounded(edited);
        frmCustomer::instance().toRefreshCustomerDetails();
        auto* cells = control<forms::MSHFlexGrid>(frmCustomer::instance(), "grdCustomerDtls");
        before = cells->TextMatrix(row, 3);
        after = u"%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++edits);
        cells->setTextMatrix(row, 3, after);
        QThread::msleep(static_cast<unsigned long>(QRandomGenerator::global()->bounded(30)));
        return row;
    }

    void save(int row) {
        const int troubles = refused + asked;
        control<QPushButton>(frmCustomer::instance(), "cmdSaveCustomer")->click();
        if (refused + asked == troubles)
            std::cout << "edit " << row << ' ' << before.toStdString() << ' ' << after.toStdString() << '\n';
    }

    static void showIndex() {
        frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
        form.Show();
        control<forms::ComboBox>(form, "cmdCustomerName")
            ->setListIndex(QRandomGenerator::global()->bounded(customers));
        control<forms::DTPicker>(form, "dtFrom")->setValue({2020, 1, 1});
        control<forms::ListBox>(form, "lstParameter")->selectAll();
        control<QPushButton>(form, "cmdView")->click();
    }

    void readFile() {
        const int number = 1 + QRandomGenerator::global()->bounded(fileCount);
        const QString path = qEnvironmentVariable("CROWD_FILES") + u"/%1.xls"_s.arg(number);
        filesRead += readSurveyFiles({ReturnedFile(path)}).bad.isEmpty() ? 1 : 0;
    }

    QString before, after; ///< the number that is being edited
    int edits = 0;
    int filesRead = 0;
    int refused = 0;
    int asked = 0;
};

void makeFiles(const QTemporaryDir& folder) {
    SurveyFile file{.date = {2031, 1, 2}, .questions = {}};
    for (int i = 0; i < 20; ++i) {
        file.questions.emplace_back(i + 1, true);
        file.entered[u'C' + QString::number(14 + 2 * i)] = 1 + i % 9;
    }
    for (int i = 1; i <= fileCount; ++i) {
        file.respondentid = i * 10 + 1;
        file.saveAs(folder.filePath(u"%1.xls"_s.arg(i)));
    }
}

/// What all programs printed.
struct Figures {
    std::map<QString, std::vector<double>> numbers; ///< by the first word of the line, sorted
    std::map<int, QStringList> before, after;       ///< of the confirmed edits, by row

    int sumOf(const QString& word) const {
        const auto found = numbers.find(word);
        return found == numbers.end() ? 0
                                      : int(std::accumulate(found->second.begin(), found->second.end(), 0.0));
    }
    /// Edits that overwrote another one unasked: each text is followed by one confirmed edit, except the
    /// last, which is stored.
    int lost(const QStringList& stored) const {
        int count = 0;
        for (const auto& [row, texts] : before) {
            const QSet<QString> followed(texts.begin(), texts.end());
            const QStringList& written = after.at(row);
            const auto isFollowed = [&](const QString& text) { return followed.contains(text); };
            const QString last = stored[row - 1];
            count +=
                int(texts.size() - followed.size()) + (written.contains(last) && !isFollowed(last) ? 0 : 1);
        }
        return count;
    }
    int edits() const {
        return std::accumulate(before.begin(), before.end(), 0,
                               [](int sum, const auto& row) { return sum + int(row.second.size()); });
    }
};

Figures runAll(const QString& source, int seconds, int programs) {
    std::list<QTemporaryDir> homes;
    std::list<QProcess> running;
    for (int i = 0; i < programs; ++i) {
        QProcess& program = running.emplace_back();
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(QCoreApplication::applicationFilePath(),
                      {QString::number(seconds), u"member"_s, homes.emplace_back().path(), source});
    }
    const auto all = [&running](const auto& isSo) {
        return std::all_of(running.begin(), running.end(), isSo);
    };
    constexpr int patience = 120000;
    if (!QTest::qWaitFor([&] { return all([](QProcess& program) { return program.canReadLine(); }); },
                         patience))
        return {};
    for (QProcess& program : running) {
        program.readLine();
        program.write("\n");
        program.waitForBytesWritten();
    }
    const auto hasEnded = [](const QProcess& program) { return program.state() == QProcess::NotRunning; };
    static_cast<void>(QTest::qWaitFor([&] { return all(hasEnded); }, 1000 * seconds + patience));
    Figures figures;
    for (QProcess& program : running) {
        for (const QByteArray& line : program.readAllStandardOutput().split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words.size() == 2)
                figures.numbers[QString::fromUtf8(words[0])].push_back(words[1].toDouble());
            if (words.size() == 4) {
                figures.before[words[1].toInt()] << QString::fromUtf8(words[2]);
                figures.after[words[1].toInt()] << QString::fromUtf8(words[3]);
            }
        }
    }
    for (auto& [word, values] : figures.numbers)
        std::sort(values.begin(), values.end());
    return figures;
}

QStringList textsOf(const QString& sql) {
    QStringList texts;
    ado::Recordset records(sql, *cnnMain);
    for (; !records.Eof(); records.MoveNext())
        texts << records.FieldAt(0).Text();
    return texts;
}

/// False when something was lost, or nothing was done.
bool measure(const char* name, const QString& source, int seconds, int programs) {
    const QString files = u"select count(*) as all_files from readingfile"_s;
    const QTemporaryDir home;
    openStore(home.path(), source);
    const int filesBefore = textsOf(files)[0].toInt() + programs; // each reads one before the start
    Figures figures = runAll(source, seconds, programs);
    const int lost = figures.lost(textsOf(u"select telno from customer where custid<=5 order by custid"_s));
    const int read = figures.sumOf(u"files"_s);
    const int lostFiles = read - (textsOf(files)[0].toInt() - filesBefore);
    std::printf(
        "%s: %d edits confirmed, %d lost; %d files read, %d of them not recorded; asked about %d times, "
        "%d messages\n",
        name, figures.edits(), lost, read, lostFiles, figures.sumOf(u"asked"_s), figures.sumOf(u"refused"_s));
    bool isGood = lost == 0 && lostFiles == 0 && figures.edits() > 0 && read > 0;
    for (const QString& kind : {u"saving"_s, u"viewing"_s, u"reading"_s}) {
        const std::vector<double>& times = figures.numbers[kind];
        isGood = isGood && !times.empty();
        if (!times.empty())
            std::printf("  %-8s %6.1f a second, median %7.1f ms, 99 of 100 within %7.1f ms\n",
                        qPrintable(kind), double(times.size()) / seconds, times[times.size() / 2],
                        times[times.size() * 99 / 100]);
    }
    std::fflush(stdout);
    cnnMain.reset();
    return isGood;
}

QString serverSource(const QString& socket) {
    return u"SOCKET="_s + socket + u";DATABASE=tally;UID=member";
}

/// Copies the open store to the server.
void copyTo(const PrivateServer& host) {
    ado::Connection server;
    server.ConnectionString = host.connection({});
    server.Open();
    server.Execute(u"create database tally"_s);
    server.ConnectionString = host.connection(u"tally"_s);
    server.Open();
    QByteArray scripts;
    for (const QString& name : {u"schema"_s, u"version2"_s, u"queries"_s}) {
        QFile script(QStringLiteral(GAUGEWELL_SOURCE) + u"/home/" + name + u".sql");
        scripts += script.open(QIODevice::ReadOnly) ? script.readAll() + '\n' : QByteArray();
    }
    ado::runScript(server, scripts);
    copyAllRows(*cnnMain, server);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GAUGEWELL_SOURCE "/tests/data/screen.json");
    qputenv("QT_LOGGING_RULES", "*.warning=false"); // what the offscreen platform cannot do
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int seconds = arguments.value(1, u"60"_s).toInt();
    if (arguments.value(2) == u"member") {
        if (!openStore(arguments[3], arguments[4]))
            return 1;
        const int code = Member().work(seconds);
        MDIMain::destroy();
        return code;
    }
    const int programs = arguments.value(2, u"10"_s).toInt();
    const QTemporaryDir home;
    const QString path = home.filePath(u"Tallywell.mdb"_s);
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), path);
    if (!openStore(home.path(), u"DBQ="_s + path))
        return 1;
    buildStore(customers);
    run(u"update customer set telno='0'"_s);
    makeFiles(home);
    qputenv("CROWD_FILES", home.path().toUtf8());
    PrivateServer host;
    copyTo(host);
    const Relay far(host.socket(), std::chrono::microseconds(500));
    bool isGood = measure("file", u"DBQ="_s + path, seconds, programs);
    isGood = measure("server", serverSource(host.socket()), seconds, programs) && isGood;
    if (seconds < 10)
        return isGood ? 0 : 1;
    isGood = measure("server, 1 ms away", serverSource(far.socket()), seconds, programs) && isGood;
    return isGood ? 0 : 1;
}
