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
    QString zero;     ///< words in the place of a number 0; Null stands for "0 as a number"
    QString yes, no;  ///< words of a yes/no; one that is Null is no
    qint64 line = 0;  ///< of the layout file, for errors
    QString words;    ///< what stands before the value: a label; for a column its heading
};

/// A line of the head, its value taken from the records.
struct HeadValue {
    enum class Take { First, Smallest, Largest };

    ShownField field;
    Take take = Take::First;
};

/// A line of the head whose text the program hands over as a formula.
struct HeadFormula {
    QString name;
    QString label;
    qint64 line = 0;
};

/// Records are set together under a heading. Groups stand within one another in the order of the layout.
struct Group {
    ShownField field;
    bool descending = false;
    QString oneRow, manyRows; ///< words of the row count, with %n for the number; both empty: no count
};

struct Column {
    ShownField field;
    double share = 0; ///< of the page's width; the shares of all columns make up the whole
    Qt::Alignment align = Qt::AlignLeft;
    bool mean = false;   ///< the mean of a number stands below each innermost group
    bool repeats = true; ///< false: an equal value in the row below is left out
};

struct Order {
    QString field;
    bool descending = false;
    qint64 line = 0;
};

struct Picture {
    QString file;      ///< full path
    double height = 0; ///< at most, in millimetres
    qint64 line = 0;
};

/// What a layout file says. docs/report-layouts.md describes the file for those who edit one.
struct Layout {
    QString file; ///< full path
    QString title;
    QString table;   ///< a table or saved query
    qint64 line = 0; ///< where the table is named
    QString
        organisation; ///< name of the formula that holds the organisation's name; empty: it is not printed
    QString empty;    ///< what stands in the place of the rows when there are none
    QPageLayout page{QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                     QPageLayout::Millimeter};
    double fontSize = 9;               ///< points, of the rows
    std::vector<HeadFormula> formulas; ///< above the values
    std::vector<HeadValue> values;
    std::vector<Picture> pictures;
    std::vector<Group> groups;
    std::vector<Column> columns;
    std::vector<Order> orders;
};

/// Reads a layout file. Throws ReportError with file and line for a missing file, for what is no XML, and for
/// an element, attribute or value that a layout does not have.
Layout readLayout(const QString& file);

} // namespace crystal
