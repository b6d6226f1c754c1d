// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/filecontent.h"
#include "platform/excel/workbook.h"

#include <functional>

namespace excel {

class Workbooks;

/// An invisible spreadsheet application that works on files of the Excel 97-2003 format (.xls) and reads
/// those of newer Excel (.xlsx, .xlsm) and OpenDocument (.ods). It never runs a macro, computes a formula or
/// shows anything. A new Application has no workbooks; copies of it, and Workbook::Application(), are the
/// same one. Only one thread at a time uses an Application and what belongs to it.
//
/// Objects are handles: copying one is cheap and refers to the same thing, and using one after its workbook
/// was closed throws Failure. A workbook that no handle refers to any more is released without saving.
/// All failures are Failure; its text is a sentence that names the file.
class Application {
public:
    /// Opens a file, given by its path, in the desktop's spreadsheet program.
    using FileShower = std::function<void(const QString& path)>;
    /// Called by setVisible(true), which does nothing without it.
    static void setFileShower(FileShower shower);

    Application();

    excel::Workbooks Workbooks() const;
    /// Closes every workbook without saving.
    void Quit();
    /// True passes the file of every open workbook to the desktop's program, in the order of opening, as it
    /// is on disk, without unsaved changes. False hides nothing.
    void setVisible(bool visible);
    bool Visible() const;

private:
    friend class excel::Workbooks;
    friend class Workbook;
    explicit Application(std::shared_ptr<ApplicationState> shared) : state(std::move(shared)) {}
    std::shared_ptr<ApplicationState> state;
};

/// The open workbooks of an application.
class Workbooks {
public:
    /// Opens a file by its full path. Its content decides what it is, whatever its name says; all but Excel
    /// 97-2003 workbooks can be read only. Throws Failure when it is missing, unreadable, no workbook (binary
    /// or older Excel, HTML, text, other zip files), encrypted, damaged, or beyond a limit of its format.
    Workbook Open(const QString& path) const;
    /// Likewise, with the content that readContent has returned for the file.
    Workbook Open(const QString& path, const FileContent& content) const;
    int Count() const;

private:
    friend class Application;
    explicit Workbooks(std::shared_ptr<ApplicationState> shared) : state(std::move(shared)) {}
    std::shared_ptr<ApplicationState> state;
};

} // namespace excel
