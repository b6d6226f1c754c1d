// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/odstext.h"

#include "platform/excel/refusal.h"

using namespace Qt::StringLiterals;

namespace excel {

QString OdsText::read() {
    QStringList paragraphs;
    while (xml.nextChild()) {
        if (xml.name() == u"p" || xml.name() == u"h")
            paragraphs << readParagraph();
        else
            xml.skip();
    }
    return paragraphs.join(u'\n');
}

/// Spans, links and fields are read through.
QString OdsText::readParagraph() {
    QString text;
    for (int depth = 1; depth > 0;) {
        const QXmlStreamReader::TokenType token = xml.next();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::Characters) {
            addCharacters(text);
        } else if (token == QXmlStreamReader::StartElement) {
            const QStringView name = xml.name();
            if (name == u"annotation" || name == u"note" || name == u"ruby-text" || name == u"frame") {
                xml.skip();
                continue;
            }
            if (name == u"s")
                addSpaces(text);
            else if (name == u"tab")
                text += u'\t';
            else if (name == u"line-break")
                text += u'\n';
            ++depth;
        }
    }
    return text;
}

/// A line end in the file, with what indents the next line, counts as one space, and as none at the start of
/// a paragraph. Other spaces are kept, since LibreOffice writes them as they are in a text of several lines.
void OdsText::addCharacters(QString& text) {
    bool inBreak = false;
    for (const QChar c : xml.characters()) {
        const bool isEnd = c == u'\n' || c == u'\r';
        if (isEnd && !inBreak) {
            while (text.endsWith(u' '))
                text.chop(1);
            if (!text.isEmpty())
                text += u' ';
        }
        inBreak = isEnd || (inBreak && (c == u' ' || c == u'\t'));
        if (!inBreak)
            text += c == u'\t' ? QChar(u' ') : c;
    }
}

void OdsText::addSpaces(QString& text) {
    const int count = std::max(xml.number(u"c").value_or(1), 1);
    if (count > maxSpaces - spaces)
        biff::damaged(u"its cells hold more than %1 spaces"_s.arg(maxSpaces));
    spaces += count;
    text += QString(count, u' ');
}

} // namespace excel
