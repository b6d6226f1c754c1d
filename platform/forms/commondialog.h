// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

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
    /// Initial folder of the dialog for saving; empty: the current folder.
    QString InitDir;
    /// The chosen files: one full path a line; empty when cancelled.
    QString FileName;
    /// The name in FileName without its folder; empty when there are several or none.
    QString FileTitle;

    QString HelpFile;
    int HelpCommand = 0; ///< a HelpRequest; 0 until one is set
    int HelpContext = 0;

    /// Asks for a file to open. The answer is put into FileName.
    void ShowOpen();
    /// Asks for a name to save under. The answer is put into FileName as typed: no suffix is added.
    void ShowSave();
    /// Asks for a name like ShowSave and gives it the first of the suffixes, with dots, if it ends with none
    /// of them; asks before that replaces a file. Returns the path; empty when cancelled.
    QString ShowSaveAs(const QStringList& suffixes);
    void ShowHelp();

private:
    void take(const QString& answer);
};

/// Ask for files or a folder and show help; the program and tests replace them.
extern std::function<QString(const CommonDialog&)> openFileHook;
extern std::function<QString(const CommonDialog&)> saveFileHook;
extern std::function<QString()> openFolderHook; ///< the full path; empty when cancelled
extern std::function<void(const CommonDialog&)> helpHook;

/// The filter in the format of Qt's file dialog.
QString qtFilter(const QString& filter);

} // namespace forms
