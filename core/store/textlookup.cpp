// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/textlookup.h"

#include "core/store/store.h"

#include <algorithm>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Equal for all texts that a store of either engine takes for equal.
QString looseText(const QString& text) {
    QString loose = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    loose.removeIf(
        [](QChar c) { return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format; });
    return loose.normalized(QString::NormalizationForm_KD);
}

/// Sorted, each once.
QStringList columnOf(const std::vector<QStringList>& keys, qsizetype column) {
    std::set<QString> texts;
    for (const QStringList& key : keys)
        texts.insert(key[column]);
    return {texts.begin(), texts.end()};
}

} // namespace

bool areConfusable(const QStringList& texts) {
    const std::set<QString> exact(texts.begin(), texts.end());
    std::set<QString> loose;
    for (const QString& text : exact)
        loose.insert(looseText(text));
    return loose.size() < exact.size();
}

QString toSqlTexts(const QStringList& texts) {
    return u'\'' + texts.join(u"','"_s) + u'\'';
}

TextLookup::TextLookup(QString tableOrQuery, std::vector<const char*> textFields, QString further,
                       const char* wantedField)
    : table(std::move(tableOrQuery)), fields(std::move(textFields)), condition(std::move(further)),
      wanted(wantedField) {}

QString TextLookup::select(const QString& textCondition) const {
    QStringList columns{QLatin1StringView(wanted)};
    for (const char* field : fields)
        columns << QLatin1StringView(field);
    return u"select "_s + columns.join(u',') + u" from " + table + u" where " + textCondition +
           (condition.isEmpty() ? QString() : u" and "_s + condition);
}

void TextLookup::readAll(const std::vector<QStringList>& keys) {
    known.emplace();
    if (!keys.empty() && !readTogether(keys))
        known.reset();
}

/// False when a text needs a select of its own.
bool TextLookup::readTogether(const std::vector<QStringList>& keys) {
    std::vector<QStringList> asked;
    QStringList conditions;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        asked.push_back(columnOf(keys, qsizetype(i)));
        const bool hasApostrophe = std::any_of(asked[i].begin(), asked[i].end(),
                                               [](const QString& text) { return text.contains(u'\''); });
        if (hasApostrophe || areConfusable(asked[i]))
            return false;
        conditions << QLatin1StringView(fields[i]) + u" in ("_s + toSqlTexts(asked[i]) + u')';
    }
    ado::Recordset records(select(conditions.join(u" and "_s)), *cnnMain);
    for (; !records.Eof(); records.MoveNext()) {
        QStringList texts;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            texts << records.FieldAt(int(i) + 1).Text();
            if (!std::binary_search(asked[i].begin(), asked[i].end(), texts.last()))
                return false;
        }
        known->try_emplace(texts, records.FieldAt(0).Text());
    }
    return true;
}

QString TextLookup::find(const QStringList& texts) const {
    if (known) {
        const auto found = known->find(texts);
        return found != known->end() ? found->second : QString();
    }
    QStringList conditions;
    for (std::size_t i = 0; i < fields.size(); ++i)
        conditions << QLatin1StringView(fields[i]) + u"='"_s + texts[qsizetype(i)] + u'\'';
    ado::Recordset records(select(conditions.join(u" and "_s)), *cnnMain);
    return records.Eof() ? QString() : records.FieldAt(0).Text();
}
