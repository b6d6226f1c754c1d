// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/xmlpart.h"

#include "platform/excel/refusal.h"

using namespace Qt::StringLiterals;

namespace excel {

namespace {

constexpr int maxAttributes = 200; // of one element; each is compared with all others
constexpr int maxDepth = 500;

/// The position after the comment, CDATA section or instruction that begins at `at`; -1 for a tag.
qsizetype afterSpecial(QByteArrayView content, qsizetype at) {
    static constexpr std::pair<QByteArrayView, QByteArrayView> kinds[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    if (at + 1 == content.size() || (content[at + 1] != '!' && content[at + 1] != '?'))
        return -1;
    for (const auto& [start, end] : kinds) {
        if (!content.sliced(at).startsWith(start))
            continue;
        const qsizetype close = content.indexOf(end, at + start.size());
        return close < 0 ? content.size() : close + end.size();
    }
    return -1;
}

/// Moves from the start of a tag to its end; false when it has too many quoted values.
bool passTag(QByteArrayView content, qsizetype& at) {
    for (int values = 0; at < content.size() && content[at] != '>'; ++at) {
        if (content[at] != '"' && content[at] != '\'')
            continue;
        if (++values > maxAttributes)
            return false;
        at = content.indexOf(content[at], at + 1);
        if (at < 0)
            at = content.size() - 1;
    }
    return true;
}

/// What would take QXmlStreamReader too much time or memory, as the end of a sentence; empty without it.
QString excessOf(QByteArrayView content) {
    int depth = 0;
    for (qsizetype at = content.indexOf('<'); at >= 0; at = content.indexOf('<', at)) {
        if (const qsizetype after = afterSpecial(content, at); after >= 0) {
            at = after;
            continue;
        }
        const bool isEnd = at + 1 < content.size() && content[at + 1] == '/';
        if (!passTag(content, at))
            return u"has an element with too many attributes"_s;
        if (isEnd)
            --depth;
        else if (content[at - 1] != '/')
            ++depth;
        if (depth > maxDepth)
            return u"has elements nested too deep"_s;
    }
    return {};
}

} // namespace

XmlPart::XmlPart(const QByteArray& content, const QString& partName) : xml(content), title(partName) {
    if (content.contains('\0'))
        biff::damaged(u"its part \"%1\" is not in UTF-8"_s.arg(title));
    if (const QString excess = excessOf(content); !excess.isEmpty())
        biff::damaged(u"its part \"%1\" %2"_s.arg(title, excess));
    xml.setNamespaceProcessing(false);
    while (!xml.isStartElement())
        if (next() == QXmlStreamReader::DTD)
            throw biff::Refusal(
                u"has a document type declaration in its part \"%1\", which is not allowed"_s.arg(title));
}

void XmlPart::check() const {
    if (xml.hasError() || xml.atEnd())
        biff::damaged(u"its part \"%1\" is no well-formed XML"_s.arg(title));
}

QString XmlPart::attribute(QStringView name, QStringView prefix) const {
    return attributeView(name, prefix).toString();
}

QStringView XmlPart::attributeView(QStringView name, QStringView prefix) const {
    constexpr QStringView declaration = u"xmlns";
    const QXmlStreamAttributes all = xml.attributes(); // const: iterating must not copy them
    for (const QXmlStreamAttribute& attribute : all)
        if (attribute.name() == name &&
            (prefix.isNull() ? attribute.prefix() != declaration : attribute.prefix() == prefix))
            return attribute.value();
    return {};
}

std::optional<int> XmlPart::number(QStringView attributeName) const {
    bool good = false;
    const int number = attributeView(attributeName).toInt(&good);
    return good ? std::optional(number) : std::nullopt;
}

bool XmlPart::flag(QStringView attributeName) const {
    const QStringView value = attributeView(attributeName);
    return value == u"1" || value == u"true";
}

bool XmlPart::nextChild() {
    const bool found = xml.readNextStartElement();
    if (!found && xml.hasError())
        check();
    return found;
}

void XmlPart::skip() {
    xml.skipCurrentElement();
    if (xml.hasError())
        check();
}

QString XmlPart::text() {
    QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    if (xml.hasError())
        check();
    return text;
}

QXmlStreamReader::TokenType XmlPart::next() {
    const QXmlStreamReader::TokenType token = xml.readNext();
    check();
    return token;
}

} // namespace excel
