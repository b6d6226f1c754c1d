// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPageLayout>
#include <QString>

#include <vector>

namespace crystal {

/// A field and how its value becomes text.
struct ShownField {
    enum class Format { Text, Date, Number, YesNo };

    QString name;
    Format format = Format::Text;
    int decimals = 0; ///< of a number, 0..9
    QString zero;     ///< text in place of the number 0; Null: 0 is shown as a number
    QString yes, no;  ///< texts of a yes/no; Null counts as no
    qint64 line = 0;  ///< of the layout file, for errors
    QString words;    ///< text before the value: a label; for a column its heading
};

/// A line of the head, its value taken from the records.
struct HeadValue {
    enum class Take { First, Smallest, Largest };

    ShownField field;
    Take take = Take::First;
};

/// A line of the head whose text the program passes as a formula.
struct HeadFormula {
    QString name;
    QString label;
    qint64 line = 0;
    qsizetype place = 0; ///< how many values are above it
};

/// Records collected under a heading. Groups are nested in the order of the layout.
struct Group {
    ShownField field;
    bool descending = false;
    QString oneRow, manyRows; ///< texts of the row count, with %n for the number; both empty: no count
};

struct Column {
    ShownField field;
    double share = 0; ///< of the page's width; the shares of all columns make up the whole
    Qt::Alignment align = Qt::AlignLeft;
    bool mean = false;   ///< the mean of a number is shown below each innermost group
    QString meanOf;      ///< a yes/no: the mean leaves records out where it is no; empty: none
    bool repeats = true; ///< false: an equal value in the row below is left out
};

struct Order {
    QString field;
    bool descending = false;
    qint64 line = 0;
    QString where, is; ///< sorts only the records whose text `where` is `is`; empty: all
};

struct Picture {
    QString file;      ///< full path
    double height = 0; ///< at most, in millimetres
    qint64 line = 0;
};

/// The contents of a layout file. docs/report-layouts.md describes the format.
struct Layout {
    QString file; ///< full path
    QString title;
    QString table;        ///< a table or saved query
    qint64 line = 0;      ///< where the table is named
    QString organisation; ///< formula of the organisation's name; empty: not printed
    QString empty;        ///< text in place of the rows when there are none
    QPageLayout page{QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                     QPageLayout::Millimeter};
    double fontSize = 9; ///< points, of the rows
    std::vector<HeadFormula> formulas;
    std::vector<HeadValue> values;
    std::vector<Picture> pictures;
    std::vector<Group> groups;
    std::vector<Column> columns;
    std::vector<Order> orders;
};

/// Reads a layout file. Throws Failure with file and line for a missing file, for invalid XML, and for an
/// unknown element, attribute or value.
Layout readLayout(const QString& file);

} // namespace crystal
