// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/reports.h"

#include "core/base/gblGlobal.h"

using namespace Qt::StringLiterals;

void startReport(crystal::CrystalReport& report, const QString& file, const QString& formulaName,
                 const QString& title, const QString& selection, const QStringList& further) {
    report.Connection = cnnMain.get();
    report.Password = u'\n' + storePassword();
    report.Formulas(0) = formulaName + u"='" + strCompanyName + u'\'';
    report.DataFiles(0) = homeDirectory() + u"/Tallywell.mdb";
    report.ReportFileName = homeDirectory() + u'/' + file;
    report.SelectionFormula = selection;
    report.WindowTitle = title;
    report.WindowState = crystal::MaximizedWindow;
    for (int i = 0; i < further.size(); ++i)
        report.Formulas(i + 1) = further[i];
    const auto clearRun = [&] { // the next report may not set them
        report.Connection = nullptr;
        report.SelectionFormula.clear();
        for (int i = 0; i < further.size(); ++i)
            report.Formulas(i + 1).clear();
    };
    try {
        report.setAction(crystal::RunReport);
    } catch (const Failure& failure) {
        clearRun();
        if (cnnMain) {
            cnnMain->Errors().Clear();
            cnnMain->Errors().Add({failure.number(), failure.text()});
        }
        throw;
    }
    clearRun();
}

QString toFormulaDate(const QString& dateText) {
    return u"date("_s + dateText.mid(6) + u',' + dateText.mid(3, 2) + u',' + dateText.left(2) + u')';
}
