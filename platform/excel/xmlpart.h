// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QXmlStreamReader>

#include <optional>

namespace excel {

/// Reads the elements of an XML part forward. Names are compared without their prefixes. A document type
/// declaration is refused, so that no entity is expanded and nothing outside the part is read. Every function
/// throws biff::Refusal for XML that is not well formed.
class XmlPart {
public:
    /// Stands at the root element. The part's name is for messages.
    XmlPart(const QByteArray& content, const QString& partName);

    QStringView name() const { return xml.name(); } ///< of the current element
    /// An attribute of the current element by its name without prefix; empty when it is missing. With a
    /// prefix only the one with that prefix.
    QString attribute(QStringView name, QStringView prefix = {}) const;
    /// The same; valid until the reader moves.
    QStringView attributeView(QStringView name, QStringView prefix = {}) const;
    std::optional<int> number(QStringView attributeName) const; ///< nothing for a missing or other one
    bool flag(QStringView attributeName) const;                 ///< true for "1" and "true"

    /// Moves into the next child of the current element; false, and out of the element, after the last.
    bool nextChild();
    void skip(); ///< moves out of the current element
    /// The characters directly in the current element; moves out of it.
    QString text();
    /// Moves to the next token inside the part.
    QXmlStreamReader::TokenType next();
    QStringView characters() const { return xml.text(); } ///< of a token of characters

private:
    void check() const;
    QXmlStreamReader xml;
    QString title;
};

} // namespace excel
