// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"
#include "platform/crystal/output.h"
#include "tests/support/pdftext.h"
#include "tests/support/storetest.h"

/// A store with the program's layouts; a report is captured instead of shown. Today is the last day of 2024.
struct ReportTest : StoreTest {
    static inline const QDate spring{2024, 3, 1}, autumn{2024, 9, 1}, today{2024, 12, 31};
    Replaced<forms::todayHook> fixedDay{[] { return today; }};

    void SetUp() override {
        StoreTest::SetUp();
        const QDir source(QStringLiteral(GAUGEWELL_SOURCE "/home"));
        for (const QString& file : source.entryList({u"*.rpt"_s}))
            copyHomeFile(file);
        strCompanyName = u"Larkmoor Ltd"_s;
    }
    /// The pages of the last report, read from its PDF; none if none was run.
    QStringList takePages() {
        if (!shown)
            return {};
        crystal::savePdf(*std::exchange(shown, nullptr), home() + u"/out.pdf"_s);
        return pdfPages(home() + u"/out.pdf"_s);
    }
    /// Prints by the form and returns the report's text; fails unless its window has that title.
    QString print(QWidget& form, const QString& expectedTitle) {
        title.clear();
        press(form, "cmdPrint");
        EXPECT_EQ(title, expectedTitle);
        expectIdle();
        return takePages().join(u' ');
    }

    std::shared_ptr<const crystal::Report> shown;
    QString title; ///< of the last report's window
    Replaced<crystal::previewHook> preview{[this](const auto& run, const QString& windowTitle, int state) {
        shown = run;
        title = windowTitle;
        EXPECT_EQ(state, crystal::MaximizedWindow);
    }};
};
