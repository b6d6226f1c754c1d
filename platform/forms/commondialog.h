// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>
#include <functional>

namespace forms {

/// Bits of CommonDialog::Flags. The read-only box is never shown, with HideReadOnly or without.
enum FileFlag { HideReadOnly = 4, AllowMultiselect = 512 };

/// Values of CommonDialog::HelpCommand: the topic of HelpContext, or the contents.
enum HelpRequest { HelpTopic = 1, HelpContents = 11 };

/// The user cancelled a dialog whose CancelError is set.
class DialogCancelled : public std::exception {
public:
    static constexpr int Number = 32755;
    const char* what() const noexcept override { return "Cancel was selected."; }
};

/// The file and help dialogs, driven by properties.
class CommonDialog {
public:
    /// Pairs of a description and a pattern, all separated by bars: "Workbooks|*.xls|All files|*".
    QString Filter;
    int Flags = 0;            ///< bits of FileFlag
    bool CancelError = false; ///< a cancel throws DialogCancelled
    /// Where the dialog for saving begins; empty: the current folder.
    QString InitDir;
    /// What the user chose: one full path a line; empty when cancelled.
    QString FileName;
    /// The name in FileName without its folder; empty when there are several or none.
    QString FileTitle;

    QString HelpFile;
    int HelpCommand = 0; ///< a HelpRequest; 0 until one is set
    int HelpContext = 0;

    /// Asks for a file to open. The answer stands in FileName.
    void ShowOpen();
    /// Asks for a name to save under. The answer stands in FileName as it was typed: no suffix is added.
    void ShowSave();
    void ShowHelp();

private:
    void take(const QString& answer);
};

/// Who asks for files and who shows help; the program and tests put theirs here.
extern std::function<QString(const CommonDialog&)> openFileHook;
extern std::function<QString(const CommonDialog&)> saveFileHook;
extern std::function<void(const CommonDialog&)> helpHook;

/// The filter as Qt's file dialog takes it.
QString qtFilter(const QString& filter);

} // namespace forms
