// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

#include <QSaveFile>

#include <memory>

namespace tables {

/// A table on its way into a file. Memory does not grow with its rows. The file is written beside its target
/// and replaces it at the end only; without finish() an older file stays as it is. Everything throws Failure,
/// with a sentence that names the target.
class TableFile {
public:
    virtual ~TableFile() = default;
    TableFile(const TableFile&) = delete;
    TableFile& operator=(const TableFile&) = delete;

    virtual void addRow(const QVariantList& row) = 0;
    void finish();

protected:
    explicit TableFile(const QString& path);
    /// Whatever is still to be written.
    virtual void complete() {}
    void write(const QByteArray& bytes);
    [[noreturn]] void fail(const QString& reason) const;

private:
    QSaveFile target;
};

/// The suffixes of the formats, with their dots; the first one is usual.
QStringList suffixes();

/// Begins a file; its name must end with one of the suffixes.
std::unique_ptr<TableFile> openTableFile(const QString& path, const QStringList& headings);

/// Writes a whole table.
void save(const Table& table, const QString& path);

} // namespace tables
