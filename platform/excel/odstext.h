// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/xmlpart.h"

namespace excel {

/// Reads the texts of an OpenDocument spreadsheet's cells.
class OdsText {
public:
    static constexpr int maxSpaces = 1'000'000; ///< announced by counts, in the whole file

    explicit OdsText(XmlPart& part) : xml(part) {}

    /// The text of the current cell: its paragraphs joined by line feeds, without its note and drawings.
    /// Moves out of the cell. Throws biff::Refusal.
    QString read();

private:
    QString readParagraph();
    void addCharacters(QString& text);
    void addSpaces(QString& text);

    XmlPart& xml;
    int spaces = 0;
};

} // namespace excel
