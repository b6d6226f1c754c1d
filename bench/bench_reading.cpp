// SPDX-License-Identifier: GPL-3.0-or-later
// Checks 500 filled survey files of 50 questions, reads them into an empty store, writes included, and again
// as .xlsx and .ods files made by LibreOffice, and undoes the readings. Beside them: python3-xlrd parses the
// .xls files, and python3-openpyxl reads the values of all cells of the .xlsx files.
#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "core/store/transaction.h"
#include "exchange/files/readingundo.h"
#include "exchange/files/surveychecker.h"
#include "exchange/reading.h"
#include "tests/support/surveyfile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 500;
constexpr int questionCount = 50;

/// Every fifth question is Descriptive.
bool isScore(int questionid) {
    return questionid % 5 != 0;
}

QStringList makeFiles(const QTemporaryDir& home) {
    SurveyFile file;
    int row = cellmap::firstRow;
    for (int questionid = 1; questionid <= questionCount; ++questionid) {
        file.questions.emplace_back(questionid, isScore(questionid));
        file.entered[u'D' + QString::number(row)] = 1 + questionid % 10;
        if (isScore(questionid))
            file.entered[u'C' + QString::number(row)] = 1 + questionid % 9;
        else
            file.entered[u'B' + QString::number(row + 1)] =
                u"The answer in words to question %1."_s.arg(questionid);
        row += cellmap::blockRows(isScore(questionid));
    }
    QStringList paths;
    for (int i = 1; i <= fileCount; ++i) {
        file.respondentid = i;
        paths << home.filePath(u"%1.xls"_s.arg(i));
        file.saveAs(paths.last());
    }
    return paths;
}

/// One customer and survey with a questionnaire of all questions for each respondent.
void addQuestionnaires() {
    Transaction transaction;
    cnnMain->Execute(u"insert into customer (custname) values ('Acme')"_s);
    cnnMain->Execute(u"insert into survey (sdate, custid) values ('2024-03-05', 1)"_s);
    for (int respondent = 1; respondent <= fileCount; ++respondent)
        cnnMain->Execute(u"insert into respondent (custid, respondentname) values (1, 'Ann')"_s);
    cnnMain->Execute(u"insert into responquesindex (respondentid, questionid, surveyid, [Order]) "
                     "select respondentid, questionid, 1, questionid from respondent, questions"_s);
    transaction.Commit();
}

bool connect(const QTemporaryDir& home) {
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    setHomeDirectory(home.path());
    if (!QFile::copy(QStringLiteral(GAUGEWELL_STORE), home.filePath(u"Tallywell.mdb"_s)) ||
        !toCreateDSN(u"gwl"_s, strDatabasePath))
        return false;
    toOpenConnection();
    ado::Recordset questions(u"select * from questions"_s, *cnnMain, ado::Recordset::Lock::Optimistic);
    for (int questionid = 1; questionid <= questionCount; ++questionid) {
        questions.AddNew();
        questions["Type"] = isScore(questionid);
        questions.Update();
    }
    addQuestionnaires();
    return true;
}

/// Resident memory in MB.
double residentMemory() {
    QFile status(u"/proc/self/statm"_s);
    constexpr double pagesPerMb = 256;
    return status.open(QIODevice::ReadOnly) ? status.readAll().split(' ').value(1).toDouble() / pagesPerMb
                                            : 0;
}

/// How long Python takes for the statement, which uses the module, with all paths.
double pythonSeconds(const QString& module, const QString& statement, const QStringList& paths) {
    const QString script = u"import sys, time, %1\n"
                           "start = time.perf_counter()\n"
                           "for path in sys.argv[1:]: %2\n"
                           "print(time.perf_counter() - start)\n"_s.arg(module, statement);
    QProcess python;
    python.start(u"/usr/bin/python3"_s, QStringList{u"-c"_s, script} + paths);
    python.waitForFinished(-1);
    return python.readAllStandardOutput().trimmed().toDouble();
}

/// The files converted by LibreOffice.
QStringList converted(const QTemporaryDir& home, const QStringList& paths, const QString& type) {
    QStringList results;
    for (const QString& path : paths)
        results << path.chopped(3) + type;
    constexpr qsizetype atOnce = 200;
    for (qsizetype first = 0; first < paths.size(); first += atOnce) {
        QProcess office; // its list of files is not shown
        office.start(u"soffice"_s,
                     QStringList{u"-env:UserInstallation=file://"_s + home.filePath(u"profile"_s),
                                 u"--headless"_s, u"--convert-to"_s, type, u"--outdir"_s, home.path()} +
                         paths.mid(first, atOnce));
        office.waitForFinished(-1);
    }
    return results;
}

/// Checks the files; false unless all get that verdict.
bool check(const char* pass, const QStringList& paths, Verdict expected) {
    QElapsedTimer clock;
    clock.start();
    SurveyChecker checker;
    std::vector<CheckedFile> checked;
    for (const QString& path : paths)
        checked.push_back(checker.check(path));
    judgeTogether(checked);
    std::printf("%-16s %6.2f s\n", pass, double(clock.elapsed()) / 1000);
    return std::all_of(checked.begin(), checked.end(),
                       [expected](const CheckedFile& file) { return file.verdict == expected; });
}

/// Undoes the readings from the last to the first, each after a copy, and shows the time of the first.
void undoAll(int readings) {
    for (int readingid = readings; readingid > 0; --readingid) {
        QElapsedTimer clock;
        clock.start();
        copyStore(*cnnMain, strDatabasePath);
        const ReadingUndo done = undoReading(readingid, QDateTime::currentDateTime());
        if (readingid == 1)
            std::printf("%-16s %6.2f s for %d answers\n", "undone", double(clock.elapsed()) / 1000,
                        done.removedCount());
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GAUGEWELL_SOURCE "/tests/data/screen.json");
    const QApplication application(argc, argv);
    const QTemporaryDir home;
    const QStringList paths = makeFiles(home);
    if (!connect(home))
        return 1;
    const std::pair<const char*, QStringList> passes[] = {
        {"new answers", paths},
        {"the same again", paths},
        {"as .xlsx", converted(home, paths, u"xlsx"_s)},
        {"as .ods", converted(home, paths, u"ods"_s)},
    };
    if (!check("checked, new", paths, Verdict::Ready))
        return 1;
    for (const auto& [pass, files] : passes) {
        QElapsedTimer clock;
        clock.start();
        double memory = 0;
        const std::vector<ReturnedFile> returned(files.begin(), files.end());
        const Reading reading = readSurveyFiles(returned, [&](const QString&, qsizetype left) {
            if (left == paths.size() * 9 / 10)
                memory = residentMemory();
            return true;
        });
        if (!reading.bad.isEmpty())
            return 1;
        std::printf("%-16s %6.2f s, memory after a tenth %.1f MB, after all %.1f MB\n", pass,
                    double(clock.elapsed()) / 1000, memory, residentMemory());
    }
    if (!check("checked, stored", paths, Verdict::Identical))
        return 1;
    undoAll(int(std::size(passes)));
    std::printf("%-16s %6.2f s\n", "xlrd, .xls",
                pythonSeconds(u"xlrd"_s, u"xlrd.open_workbook(path)"_s, paths));
    std::printf(
        "%-16s %6.2f s\n", "openpyxl, .xlsx",
        pythonSeconds(u"openpyxl"_s,
                      u"[list(sheet.values) for sheet in openpyxl.load_workbook(path, read_only=True)]"_s,
                      passes[2].second));
    MDIMain::destroy();
    return 0;
}
