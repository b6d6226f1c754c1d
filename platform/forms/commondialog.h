// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace forms {

/// The file and help dialogs, driven by properties.
class CommonDialog {
public:
    /// Pairs of a description and a pattern, all separated by bars: "Workbooks|*.xls|All files|*".
    QString Filter;
    /// Bits: 4 hides the read-only box (it is never shown), 512 allows several files, 8192 asks before
    /// creating.
    int Flags = 0;
    bool CancelError = false;
    /// What the user chose: one full path a line; empty when cancelled.
    QString FileName;

    QString HelpFile;
    int HelpCommand = 0; ///< 1 the topic of HelpContext, 11 the contents
    int HelpContext = 0;

    /// Asks for a file to open. The answer stands in FileName.
    void ShowOpen();
    void ShowHelp();
};

/// Who asks for files and who shows help; the program and tests put theirs here.
extern std::function<QString(const CommonDialog&)> openFileSeat;
extern std::function<void(const CommonDialog&)> helpSeat;

/// The filter as Qt's file dialog takes it.
QString qtFilter(const QString& filter);

} // namespace forms
