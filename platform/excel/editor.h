// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/book.h"
#include "platform/excel/value.h"

namespace excel::biff {

/// The operations on the cells of one worksheet. Places count from 0. Each throws Refusal when it is
/// impossible and leaves the cell unchanged. While the sheet is protected, locked cells and all formats are
/// read-only.
class Editor {
public:
    Editor(Book& workbook, int index) : book(workbook), sheet(workbook.sheet(index)) {}

    Value value(Place place) const;
    void setValue(Place place, const Value& value);
    CellFormat format(Place place) const;
    QByteArray font(Place place) const;
    /// Changes the format of one cell; `change` gets a copy that no other cell has.
    void changeFormat(Place place, const std::function<void(CellFormat&)>& change);
    void setFontColour(Place place, quint16 colour);
    void clear(const Area& area);
    void protect(const QString& password);
    void unprotect(const QString& password); ///< Refusal for a wrong password

private:
    quint16 formatIndex(Place place) const;
    quint16 plainFormat();
    void setFormat(Place place, quint16 format);
    void refuseIfProtected(Place place) const;
    quint16 formatForDate(quint16 format, QTime time);

    Book& book;
    Sheet& sheet;
};

} // namespace excel::biff
