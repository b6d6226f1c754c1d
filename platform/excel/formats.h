// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/record.h"

#include <QHash>
#include <QString>
#include <map>

namespace excel::biff {

constexpr quint16 defaultCellFormat = 15; ///< index of the format of cells without one of their own

/// One cell format (20 bytes): font, number format, lock, alignment, borders, fill. Setters also mark the
/// changed group as different from the parent style.
class CellFormat {
public:
    enum LineStyle : quint8 { NoLine = 0, Thin = 1, Medium = 2, Thick = 5, Hair = 7 };
    enum Edge { Left = 0, Right = 1, Top = 2, Bottom = 3 };

    explicit CellFormat(const QByteArray& bytes) : raw(bytes) {}
    const QByteArray& bytes() const { return raw; }

    bool isStyle() const;
    quint16 font() const;
    quint16 numberFormat() const;
    bool locked() const;
    bool wrapped() const;
    /// Equal in everything but the parent style and the marks of differing groups.
    bool looksLike(const CellFormat& other) const;

    void setFont(quint16 index);
    void setNumberFormat(quint16 id);
    void setLocked(bool locked);
    void setWrapped(bool wrapped);
    /// colour is the colour number of the file: palette index + 7.
    void setEdge(Edge edge, LineStyle style, quint8 colour);
    void setFill(quint8 colour); ///< of the whole cell
    /// A cell's format derived from this one: never a style, without extended properties.
    CellFormat cellClone(quint16 ownIndex) const;

private:
    void markUsed(quint8 group);
    QByteArray raw;
};

/// The workbook's lists of fonts, number formats and cell formats. Existing entries are never changed or
/// renumbered, since charts, styles and texts refer to them; a new one reuses an equal entry or is appended.
class Formats {
public:
    static constexpr quint16 maxCellFormats = 4000;
    static constexpr size_t maxFonts = 510;

    explicit Formats(const Records& globals); ///< Refusal when a list is missing or broken

    /// Index of the format of cells without any other format.
    quint16 defaultIndex() const { return cellDefault; }
    /// An index beyond the list reads as the default format.
    CellFormat cellFormat(quint16 index) const;
    /// A changeable copy of a format, for use on cells instead of `index`.
    CellFormat clone(quint16 index) const { return cellFormat(index).cellClone(valid(index)); }
    /// Index of an equal format, appended when there is none; Refusal when the list is full.
    quint16 intern(const CellFormat& format);

    QByteArray font(quint16 index) const;
    /// Index of the same font in another colour.
    quint16 fontInColour(quint16 font, quint16 colour);

    bool isDate(quint16 numberFormat) const;
    /// Id of the number format with that code.
    quint16 numberFormat(const QString& code);

    /// Adds what was appended to the records the lists were read from.
    void writeInto(Records& globals) const;

private:
    quint16 valid(quint16 index) const { return index < cellFormats.size() ? index : cellDefault; }
    void refreshChecksum(Records& globals) const;

    std::vector<QByteArray> fonts;
    std::vector<QByteArray> cellFormats;
    QHash<QByteArray, quint16> cellFormatIndex;
    std::map<quint16, QString> numberFormats;
    Records newNumberFormats;
    size_t readFonts = 0;
    size_t readCellFormats = 0;
    quint16 cellDefault = defaultCellFormat;
};

} // namespace excel::biff
