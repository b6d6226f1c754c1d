// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tables/tablefile.h"

#include "platform/failure/failure.h"
#include "platform/tables/csvfile.h"
#include "platform/tables/xlsxfile.h"

using namespace Qt::StringLiterals;

namespace tables {

TableFile::TableFile(const QString& path) : target(path) {
    if (!target.open(QIODevice::WriteOnly))
        fail(target.errorString());
}

void TableFile::finish() {
    complete();
    if (!target.commit())
        fail(target.errorString());
}

void TableFile::write(const QByteArray& bytes) {
    if (target.write(bytes) != bytes.size())
        fail(target.errorString());
}

void TableFile::fail(const QString& reason) const {
    throw Failure(Failure::fileAccess,
                  u"The table could not be saved as %1: %2."_s.arg(target.fileName(), reason));
}

QStringList suffixes() {
    return {u".xlsx"_s, u".csv"_s};
}

std::unique_ptr<TableFile> openTableFile(const QString& path, const QStringList& headings) {
    if (path.endsWith(u".csv", Qt::CaseInsensitive))
        return std::make_unique<CsvFile>(path, headings);
    return std::make_unique<XlsxFile>(path, headings);
}

void save(const Table& table, const QString& path) {
    const std::unique_ptr<TableFile> file = openTableFile(path, table.headings);
    for (const QVariantList& row : table.rows)
        file->addRow(row);
    file->finish();
}

} // namespace tables
