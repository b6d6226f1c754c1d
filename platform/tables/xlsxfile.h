// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/tablefile.h"

#include <QTemporaryDir>

struct lxw_workbook;
struct lxw_worksheet;
struct lxw_format;

namespace tables {

/// A workbook of one sheet: the headings are bold, stay in sight and have filters; dates are dates. A text of
/// more than 32767 characters and a row after the 1048576th do not fit in.
class XlsxFile : public TableFile {
public:
    XlsxFile(const QString& path, const QStringList& headings);
    ~XlsxFile() override;
    void addRow(const QVariantList& row) override;

protected:
    void complete() override;

private:
    void addCell(int column, const QVariant& value);
    void addDate(int column, const QDate& day);
    void addText(int column, const QString& text, lxw_format* textFormat);
    int closeBook();

    QTemporaryDir folder; ///< the library writes a file of its own
    lxw_workbook* book;
    lxw_worksheet* sheet;
    lxw_format* bold;
    lxw_format* wrapped;
    lxw_format* number;
    lxw_format* date;
    quint32 row = 0;
    std::vector<qsizetype> widths; ///< in characters
};

} // namespace tables
