// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/personname.h"

using namespace Qt::StringLiterals;

PersonName::PersonName(const QString& name, const QString& email) {
    QStringList texts;
    for (const QString& text : {email.trimmed(), name.trimmed()}) { // an address may begin with the name
        if (!text.isEmpty())
            texts << QRegularExpression::escape(text);
    }
    if (texts.isEmpty())
        return;
    pattern.setPattern(u"(?<![\\p{L}\\p{N}])(?:"_s + texts.join(u'|') + u")(?![\\p{L}\\p{N}])");
    pattern.setPatternOptions(QRegularExpression::CaseInsensitiveOption |
                              QRegularExpression::UseUnicodePropertiesOption);
}

bool PersonName::isIn(const QString& text) const {
    return !pattern.pattern().isEmpty() && pattern.match(text).hasMatch();
}

QString PersonName::replaced(const QString& text, const QString& by) const {
    if (!isIn(text))
        return text;
    return QString(text).replace(pattern, QString(by).replace(u'\\', u"\\\\"_s));
}
