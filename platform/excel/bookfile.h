// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/book.h"
#include "platform/excel/compoundfile.h"
#include "platform/excel/filecontent.h"

namespace excel::biff {

/// Describes a file that cannot be read, by its first bytes, as the end of a sentence; empty for a compound
/// file.
QString describeForeignFile(const QByteArray& file);

/// A workbook together with the file it came from.
class BookFile {
public:
    /// The file of that path with that content. Throws Failure.
    BookFile(const QString& path, const FileContent& content);

    Book& book() { return *workbook; }
    const QString& path() const { return filePath; }
    QString name() const; ///< without the folder

    /// Writes a file beside the old one, flushes it to disk and then replaces the old one, which thus is
    /// intact after a failure. Throws Failure; refuses to replace the file it came from when another
    /// program has changed it in the meantime, and a file that is marked read-only.
    void save(const QString& path);
    QByteArray content(); ///< what save() writes

private:
    void parse(const QByteArray& content);
    void refuseIfChangedOnDisk() const;

    QString filePath;
    CompoundFile compound;
    int bookStream = -1;
    std::unique_ptr<Book> workbook;
    DiskState onDisk;
};

} // namespace excel::biff
