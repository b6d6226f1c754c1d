// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/reportfailure.h"

#include <QString>

#include <functional>
#include <map>
#include <memory>

namespace ado {
class Connection;
}

namespace crystal {

class Report;

enum ReportAction { RunReport = 1 };

/// States of the preview window.
enum PreviewState { NormalWindow = 0, MinimizedWindow = 1, MaximizedWindow = 2 };

/// Runs a report by its properties: reads the layout, reads the database, which it never changes, and shows
/// the preview, from which the user prints. Every failure is thrown as Failure.
class CrystalReport {
public:
    /// The open connection to read through, which sees its own tables; null: the database file is opened.
    ado::Connection* Connection = nullptr;
    /// A line feed and then the database's password.
    QString Password;
    /// Formulas(0): "CompanyName='Larkmoor Ltd'". The name must match the layout's exactly; the text is
    /// everything between the outer apostrophes. An empty formula is ignored.
    QString& Formulas(int index) { return formulas[index]; }
    /// DataFiles(0): full path of the database.
    QString& DataFiles(int index) { return dataFiles[index]; }
    /// Full path of the layout.
    QString ReportFileName;
    /// Which records are shown (crystal::parseSelection); empty: all.
    QString SelectionFormula;
    /// Title of the preview window.
    QString WindowTitle;
    /// A PreviewState.
    int WindowState = NormalWindow;

    /// RunReport runs the report; other values do nothing.
    void setAction(int action);

private:
    QString formulaText(const QString& wanted, qint64 line) const;

    std::map<int, QString> formulas;
    std::map<int, QString> dataFiles;
};

/// Shows a report that has been run, by default in a PreviewWindow; title and state (a PreviewState) come
/// from the properties.
extern std::function<void(const std::shared_ptr<const Report>&, const QString& title, int state)> previewHook;

} // namespace crystal
