// SPDX-License-Identifier: GPL-3.0-or-later
// Fills a template with a questionnaire of 100 questions and saves it. Bound: writing the same bytes to the
// same disk. Usage: bench_excelexport TEMPLATE SHEET [ROUNDS]
#include "platform/excel/application.h"
#include "platform/failure/failure.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;
using excel::BorderWeight;

namespace {

constexpr int questions = 100;
const QString password = u"kvtwpa"_s;

// About twenty operations per question, each on one cell, like the export of a survey.
void ask(const excel::Worksheet& sheet, int row, int number) {
    for (int column = 3; column <= 6; ++column) {
        sheet.Cells(row, column).BorderAround(BorderWeight::Thin, 1);
        sheet.Cells(row, column).setLocked(true);
    }
    sheet.Cells(row, 2).setLocked(false);
    sheet.Cells(row, 2).BorderAround(BorderWeight::Thin, 3);
    sheet.Cells(row, 2).setValue(
        u"%1. How satisfied are you with the time our deliveries take to reach you?"_s.arg(number));
    sheet.Cells(row, 2).setWrapText(true);
    sheet.Cells(row, 2).setLocked(true);
    sheet.Cells(row, 9).setLocked(false);
    sheet.Cells(row, 9).setValue(QString::number(number));
    sheet.Cells(row, 9).setLocked(true);
    sheet.Cells(row, 3).setLocked(false);
    sheet.Cells(row, 4).setLocked(false);
    sheet.Cells(row, 5).setValue(number % 10);
    sheet.Cells(row, 6).setValue(number % 7);
}

struct Times {
    std::vector<double> all;
    double median() {
        std::sort(all.begin(), all.end());
        return all[all.size() / 2];
    }
};

void row(const char* what, Times& times, Times& bound) {
    std::printf("%-28s %8.2f ms  %6.1f x\n", what, times.median(), times.median() / bound.median());
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_excelexport TEMPLATE SHEET [ROUNDS]\n");
        return 2;
    }
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"survey.xls"_s);
    Times open, fill, save, whole, bound;
    const auto ms = [](const QElapsedTimer& timer) { return double(timer.nsecsElapsed()) / 1e6; };
    const int rounds = argc > 3 ? std::atoi(argv[3]) : 31;
    try {
        for (int round = 0; round < rounds; ++round) {
            QElapsedTimer total;
            total.start();
            QElapsedTimer step;
            step.start();
            const excel::Application application;
            const excel::Workbook book = application.Workbooks().Open(QString::fromLocal8Bit(argv[1]));
            const excel::Worksheet sheet = book.Worksheets(QString::fromLocal8Bit(argv[2]));
            open.all.push_back(ms(step));
            step.start();
            sheet.Unprotect(password);
            sheet.Range(u"A14"_s, u"G65536"_s).Clear();
            for (int i = 0; i < questions; ++i)
                ask(sheet, 14 + 2 * i, i + 1);
            sheet.Protect(password);
            fill.all.push_back(ms(step));
            step.start();
            book.SaveAs(target);
            save.all.push_back(ms(step));
            whole.all.push_back(ms(total));

            QFile written(target);
            if (!written.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray bytes = written.readAll();
            step.start();
            QSaveFile plain(folder.filePath(u"plain"_s));
            if (!plain.open(QIODevice::WriteOnly) || plain.write(bytes) != bytes.size() || !plain.commit())
                return 1;
            bound.all.push_back(ms(step));
        }
    } catch (const Failure& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    row("write the same bytes, synced", bound, bound);
    row("open", open, bound);
    row("fill 100 questions", fill, bound);
    row("save", save, bound);
    row("export in all", whole, bound);
    return 0;
}
