// SPDX-License-Identifier: GPL-3.0-or-later
// The time from the start of the process to the visible main window, without the splash form. Bounds: an
// empty window, and one with a word in it, for which Qt reads the fonts. They start in turn in child
// processes, which report when their window is shown.
#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/gblGlobal.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int repeats = 21;

void waitFor(QWidget& window) {
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        std::exit(1);
    std::puts("exposed");
    std::fflush(stdout);
}

int child(const QString& what) {
    if (what == u"empty" || what == u"word") {
        QWidget window;
        window.resize(1180, 660);
        if (what == u"word")
            new QLabel(what, &window);
        waitFor(window);
        return 0;
    }
    setHomeDirectory(what);
    if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 1;
    toOpenConnection();
    waitFor(MDIMain::instance());
    MDIMain::destroy();
    return cnnMain->State() == ado::StateOpen ? 0 : 1;
}

double milliseconds(const QString& program, const QString& what) {
    QElapsedTimer clock;
    clock.start();
    QProcess process;
    process.start(program, {what});
    const bool exposed = process.waitForReadyRead();
    const auto needed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    process.waitForFinished();
    if (!exposed || process.exitCode() != 0)
        std::exit(1);
    return needed;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc == 2)
        return child(QApplication::arguments().at(1));
    const QTemporaryDir home;
    QFile::copy(QStringLiteral(GAUGEWELL_STORE), home.filePath(u"Tallywell.mdb"_s));
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    std::vector<double> empty;
    std::vector<double> word;
    std::vector<double> program;
    for (int i = 0; i < repeats; ++i) {
        empty.push_back(milliseconds(QApplication::applicationFilePath(), u"empty"_s));
        word.push_back(milliseconds(QApplication::applicationFilePath(), u"word"_s));
        program.push_back(milliseconds(QApplication::applicationFilePath(), home.path()));
    }
    std::printf("empty window %.1f ms, with a word %.1f ms, main window %.1f ms: ratio %.2f (goal 1.25), to "
                "the window with a word %.2f\n",
                median(empty), median(word), median(program), median(program) / median(empty),
                median(program) / median(word));
    return 0;
}
