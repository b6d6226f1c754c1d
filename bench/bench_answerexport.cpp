// SPDX-License-Identifier: GPL-3.0-or-later
// bench_answerexport [CUSTOMERS]: the export of answers, by default of 200 and 1,000 customers (100,000 and
// 500,000 answers) out of 2,000 with 1,000,000, and its memory beside that of the open store. Bound: the same
// select read to its end without a file.
#include "bench/bigstore.h"
#include "core/Main.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/answerexport.h"
#include "platform/tables/tablefile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <numeric>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int runs = 5;

class NoFile : public tables::TableFile {
public:
    explicit NoFile(const QString& path) : TableFile(path) {}
    void addRow(const QVariantList&) override {}
};

/// A line of the process's own figures, in kilobytes.
double memory(const QByteArray& name) {
    QFile status(u"/proc/self/status"_s);
    status.open(QIODevice::ReadOnly);
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.sliced(name.size()).trimmed().split(' ').first().toDouble();
    }
    return 0;
}

void forgetPeak() {
    malloc_trim(0);
    QFile peak(u"/proc/self/clear_refs"_s);
    if (peak.open(QIODevice::WriteOnly))
        peak.write("5");
}

struct Measured {
    int rows = 0;
    double milliseconds = 1e9; ///< the best run
    double megabytes = 0;      ///< the highest peak above the memory before
};

template <class Open> Measured measure(int customers, Open open) {
    ExportChoice choice{std::vector<int>(std::size_t(customers)), {2020, 1, 1}, {2029, 12, 31}};
    std::iota(choice.custids.begin(), choice.custids.end(), measured + 1);
    Measured best;
    for (int run = 0; run < runs; ++run) {
        forgetPeak();
        const double before = memory("VmRSS:");
        QElapsedTimer clock;
        clock.start();
        const std::unique_ptr<tables::TableFile> file = open();
        best.rows = exportAnswers(choice, *file, [](const QString&, bool) { return true; });
        file->finish();
        best.milliseconds = std::min(best.milliseconds, double(clock.nsecsElapsed()) / 1e6);
        best.megabytes = std::max(best.megabytes, (memory("VmHWM:") - before) / 1024);
    }
    return best;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir home;
    const QString path = home.filePath(u"Tallywell.mdb"_s);
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), path);
    setHomeDirectory(home.path());
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    buildStore(2000);
    std::printf("best of %d\n\n answers           ms   ratio  memory MB\n", runs);
    for (const int customers : argc > 1 ? std::vector{std::atoi(argv[1])} : std::vector{200, 1000}) {
        const QString name = home.filePath(u"answers"_s);
        const Measured read = measure(customers, [&] { return std::make_unique<NoFile>(name); });
        std::printf("%8d read  %6.0f %7.2f %10.1f\n", read.rows, read.milliseconds, 1.0, read.megabytes);
        for (const QString& suffix : tables::suffixes()) {
            const Measured file =
                measure(customers, [&] { return tables::openTableFile(name + suffix, exportHeadings()); });
            std::printf("%8d %-5s %6.0f %7.2f %10.1f\n", file.rows, qPrintable(suffix), file.milliseconds,
                        file.milliseconds / read.milliseconds, file.megabytes);
        }
    }
    cnnMain.reset();
}
