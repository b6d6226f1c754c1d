// SPDX-License-Identifier: GPL-3.0-or-later
// bench_upkeep [FOLDER [CUSTOMERS]]: what is stored about one person and erasing it, cleaning up, and copies
// of the store, with 20,000 customers and 10,000,000 answers by default, of which 1,000 customers have been
// deleted. Bounds: reading the file once, and copying it. The store of bench_forms in FOLDER is copied; else
// one is built.
#include "bench/bigstore.h"
#include "core/Main.h"
#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "core/privacy/erasure.h"
#include "core/privacy/orphans.h"
#include "core/privacy/person.h"
#include "core/privacy/persontext.h"
#include "core/storerestore.h"
#include "platform/tables/tablefile.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

/// Prints the time and the longest time between two calls of the step, which works as the progress does.
class Stopwatch {
public:
    explicit Stopwatch(const char* work) : name(work) { clock.start(); }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;
    ~Stopwatch() {
        step();
        std::printf("%-44s %9.1f %9.1f %9.1f\n", name, double(clock.nsecsElapsed()) / 1e6,
                    double(std::clock() - begin) * 1000 / CLOCKS_PER_SEC, longest);
        std::fflush(stdout);
    }
    bool step() {
        const double now = double(clock.nsecsElapsed()) / 1e6;
        longest = std::max(longest, now - last);
        last = now;
        return true;
    }

private:
    const char* name;
    QElapsedTimer clock;
    std::clock_t begin = std::clock();
    double last = 0;
    double longest = 0;
};

void measurePerson(const QDir& home) {
    constexpr int respondentid = measured * 10 + 1;
    constexpr ErasureChoice removing{.keepsMarks = false, .renamesIn = true};
    Person person;
    std::vector<PersonPart> parts;
    {
        const Stopwatch watch("Person: showing 1,000 answers");
        person = requirePerson(respondentid);
        parts = findPersonParts(person);
        toPage(person, parts, QDate::currentDate());
    }
    {
        const Stopwatch watch("  saving the table as .xlsx");
        tables::save(toOneTable(parts), home.filePath(u"person.xlsx"_s));
    }
    {
        const Stopwatch watch("  what erasing does");
        planErasure(person, removing);
    }
    {
        const Stopwatch watch("  erasing, without writing the file anew");
        erasePerson(person, removing, QDateTime::currentDateTime());
    }
    Stopwatch watch("  writing the file anew");
    rewriteStore([&] { return watch.step(); });
}

void measureCleanUp() {
    run(u"delete from customer where custid > (select max(custid) from customer) - 1000"_s);
    {
        Stopwatch watch("Clean Up: counting");
        countOrphans([&](const QString&) { return watch.step(); });
    }
    Stopwatch watch("  removing 1,020,000 rows");
    const OrphanResult removed =
        removeOrphans([&](const QString&) { return watch.step(); }, QDateTime::currentDateTime());
    std::printf("  %d rows\n", removed.rows());
}

void measureCopies() {
    {
        Stopwatch watch("Backups: a copy");
        copyStore(*cnnMain, strDatabasePath, [&](const QString&) { return watch.step(); });
    }
    const QString copy = findStoreCopies().front().path;
    {
        Stopwatch watch("  checking it");
        checkCopy(copy, [&] { return watch.step(); });
    }
    {
        Stopwatch watch("  checking the present store");
        isPresentDamaged([&] { return watch.step(); });
    }
    Stopwatch watch("  restoring, with the copy before");
    restoreCopy(copy, [&] { return watch.step(); });
}

void measureBounds(const QDir& home) {
    const QString beside = home.filePath(u"bound"_s);
    {
        const Stopwatch watch("(bound: reading the file)");
        QFile file(strDatabasePath);
        file.open(QFile::ReadOnly);
        for (QByteArray part(1 << 20, '\0'); file.read(part.data(), part.size()) > 0;) {
        }
    }
    {
        const Stopwatch watch("(bound: copying the file)");
        QFile::copy(strDatabasePath, beside);
    }
    QFile::remove(beside);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QDir kept(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::tempPath());
    const QTemporaryDir temporary(kept.filePath(u"upkeep-XXXXXX"_s));
    const QDir home(temporary.path());
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    const bool isBuilt = QFile::copy(kept.filePath(u"Tallywell.mdb"_s), home.filePath(u"Tallywell.mdb"_s));
    if (!isBuilt)
        QFile::copy(QStringLiteral(GAUGEWELL_STORE), home.filePath(u"Tallywell.mdb"_s));
    setHomeDirectory(home.path());
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    if (!isBuilt)
        buildStore(argc > 2 ? std::atoi(argv[2]) : 20000);
    std::printf("%-44s %9s %9s %9s\n", "milliseconds", "elapsed", "processor", "to a step");
    measureBounds(home);
    measurePerson(home);
    measureCleanUp();
    measureCopies();
    cnnMain.reset();
    return 0;
}
